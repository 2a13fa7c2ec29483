#include "tools/linesim/adapter/adapter_line.h"
#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/event_log.h"

bool AdapterLine::run(const QString &name, const QString &argument)
{
    static const NamedCommand<AdapterLine> commands[] = {
        {"silence", &AdapterLine::doSilence}, // nothing to the program
        {"speak", &AdapterLine::doSpeak},
        {"break", &AdapterLine::doBreak}, // the line is broken
        {"mend", &AdapterLine::doMend},
        {"no-signal", &AdapterLine::doNoSignal}, // no input signal
        {"signal", &AdapterLine::doSignal},
        {"unplug", &AdapterLine::doUnplug},
        {"plug", &AdapterLine::doPlug},
        {"garbage", &AdapterLine::doGarbage},    // so many random bytes; a seed repeats them
        {"lose-echo", &AdapterLine::doLoseEcho}, // the next so many
        {"no-credit", &AdapterLine::doNoCredit}, // for so many ms
        {"allow-kill", &AdapterLine::doAllowKill},
        {"allow-version", &AdapterLine::doAllowVersion}, // the settings are applied while there is no port
        {"close", &AdapterLine::doClose},                // unplug once all has gone, and plug
        {"drop", &AdapterLine::doDrop},                  // unplug, and plug
    };
    return runFrom(commands, *this, name, argument);
}

void AdapterLine::doSilence(const QString &)
{
    m_adapter.setSilent(true);
    m_log.event(QStringLiteral("silent"));
}

void AdapterLine::doSpeak(const QString &)
{
    m_adapter.setSilent(false);
    m_log.event(QStringLiteral("speaking"));
}

void AdapterLine::doBreak(const QString &)
{
    m_adapter.setBreak(true);
    m_log.event(QStringLiteral("broken"));
    work();
}

void AdapterLine::doMend(const QString &)
{
    m_adapter.setBreak(false);
    m_log.event(QStringLiteral("mended"));
}

void AdapterLine::doNoSignal(const QString &)
{
    m_adapter.setNoSignal(true);
    m_log.event(QStringLiteral("no signal"));
    work();
}

void AdapterLine::doSignal(const QString &)
{
    m_adapter.setNoSignal(false);
    m_log.event(QStringLiteral("signal"));
    work();
}

void AdapterLine::doUnplug(const QString &)
{
    unplug();
}

void AdapterLine::doPlug(const QString &)
{
    if (!m_terminal.isPlugged() && !plug())
        m_log.event(QStringLiteral("error"), QStringLiteral("no port ") + m_settings.port);
}

void AdapterLine::doGarbage(const QString &countAndSeed)
{
    const int count = countAndSeed.section(QLatin1Char(' '), 0, 0).toInt();
    m_adapter.sendGarbage(count, countAndSeed.section(QLatin1Char(' '), 1).toUInt(), nowUs());
    m_log.event(QStringLiteral("garbage"), QString::number(count));
}

void AdapterLine::doLoseEcho(const QString &count)
{
    m_adapter.loseEchoes(count.toInt());
    m_log.event(QStringLiteral("echoes to lose"), count);
}

void AdapterLine::doNoCredit(const QString &ms)
{
    m_longestPauseMs = qMax(m_longestPauseMs, ms.toInt() + m_settings.adapter.answerMs);
    m_adapter.withholdCredit(ms.toInt(), nowUs());
    m_log.event(QStringLiteral("no credit"), ms);
    schedule();
}

void AdapterLine::doAllowKill(const QString &)
{
    m_adapter.rules().allowKill();
    m_log.event(QStringLiteral("kill allowed"));
}

void AdapterLine::doAllowVersion(const QString &)
{
    m_adapter.rules().allowVersion();
    m_log.event(QStringLiteral("version allowed"));
}

void AdapterLine::doClose(const QString &)
{
    close();
}

void AdapterLine::doDrop(const QString &)
{
    drop();
}
