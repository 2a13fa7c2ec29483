#include "tools/linesim/adapter/adapter_line.h"
#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/console/noise.h"

bool AdapterLine::run(const QString &name, const QString &argument)
{
    static const Command<AdapterLine> commands[] = {
        // Nothing to the program, and the end of it
        {"silence",
         [](AdapterLine &l, const QString &) { l.note(QStringLiteral("silent")).setSilent(true); }},
        {"speak",
         [](AdapterLine &l, const QString &) { l.note(QStringLiteral("speaking")).setSilent(false); }},
        // The line is broken; no input signal
        {"break", [](AdapterLine &l, const QString &) { l.note(QStringLiteral("broken")).setBreak(true); }},
        {"mend", [](AdapterLine &l, const QString &) { l.note(QStringLiteral("mended")).setBreak(false); }},
        {"no-signal",
         [](AdapterLine &l, const QString &) { l.note(QStringLiteral("no signal")).setNoSignal(true); }},
        {"signal",
         [](AdapterLine &l, const QString &) { l.note(QStringLiteral("signal")).setNoSignal(false); }},
        {"unplug", [](AdapterLine &l, const QString &) { l.unplug(); }},
        {"plug", [](AdapterLine &l, const QString &) { (void)l.m_port.plugIn(); }},
        // So many random bytes; a seed repeats them
        {"garbage", [](AdapterLine &l, const QString &countAndSeed) { l.sendGarbage(countAndSeed); }},
        {"lose-echo", [](AdapterLine &l, const QString &count) { l.loseEchoes(count); }}, // the next so many
        {"no-credit", [](AdapterLine &l, const QString &ms) { l.withholdCredit(ms); }},   // for so many ms
        {"allow-kill",
         [](AdapterLine &l, const QString &) { l.note(QStringLiteral("kill allowed")).rules().allowKill(); }},
        // The settings are applied while there is no port
        {"allow-version",
         [](AdapterLine &l, const QString &) {
             l.note(QStringLiteral("version allowed")).rules().allowVersion();
         }},
        {"close", [](AdapterLine &l, const QString &) { l.close(); }}, // unplug once all has gone, and plug
        {"drop", [](AdapterLine &l, const QString &) { l.drop(); }},   // unplug, and plug
    };
    if (!runFrom(commands, *this, name, argument))
        return false;
    work();
    return true;
}

/// The adapter, whose change of state the log tells as \a event.
LineAdapter &AdapterLine::note(const QString &event)
{
    m_log.event(event);
    return m_adapter;
}

void AdapterLine::sendGarbage(const QString &countAndSeed)
{
    const QByteArray bytes = noiseOf(countAndSeed);
    m_adapter.sendRaw(bytes, nowUs());
    m_log.event(QStringLiteral("garbage"), QString::number(bytes.size()));
}

void AdapterLine::loseEchoes(const QString &count)
{
    m_adapter.loseEchoes(count.toInt());
    m_log.event(QStringLiteral("echoes to lose"), count);
}

void AdapterLine::withholdCredit(const QString &ms)
{
    m_longestPauseMs = qMax(m_longestPauseMs, ms.toInt() + m_settings.adapter.answerMs);
    m_adapter.withholdCredit(ms.toInt(), nowUs());
    m_log.event(QStringLiteral("no credit"), ms);
}
