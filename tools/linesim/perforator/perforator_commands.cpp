#include "tools/linesim/perforator/perforator.h"

#include <QRandomGenerator>

const Perforator::Command Perforator::commands[] = {
    {"unplug", &Perforator::doUnplug},
    {"plug", &Perforator::doPlug},
    {"jam", &Perforator::doJam}, // nothing is punched, and there is no room
    {"unjam", &Perforator::doUnjam},
    {"garbage", &Perforator::doGarbage},      // so many random bytes; a seed repeats them
    {"tape", &Perforator::doTape},            // another tape in the reader, a file like that of --tape
    {"tape-codes", &Perforator::doTapeCodes}, // the same, a file like that of --tape-codes
    {"rewind", &Perforator::doRewind},
    {"quit", &Perforator::doQuit},
};

void Perforator::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    if (name.isEmpty())
        return;
    for (const Command &known : commands) {
        if (name == QLatin1String(known.name))
            return (this->*known.action)(command.section(QLatin1Char(' '), 1));
    }
    m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
}

void Perforator::doUnplug(const QString &)
{
    m_terminal.unplug();
    m_reading = false;
    m_log.event(QStringLiteral("unplugged"));
}

void Perforator::doPlug(const QString &)
{
    if (!m_terminal.isPlugged() && !plug())
        m_log.event(QStringLiteral("error"), QStringLiteral("no port"));
}

void Perforator::doJam(const QString &)
{
    m_jammed = true;
    m_log.event(QStringLiteral("jammed"));
}

void Perforator::doUnjam(const QString &)
{
    m_jammed = false;
    m_log.event(QStringLiteral("unjammed"));
}

void Perforator::doGarbage(const QString &countAndSeed)
{
    const int count = qBound(0, countAndSeed.section(QLatin1Char(' '), 0, 0).toInt(), 4096);
    QRandomGenerator random(countAndSeed.section(QLatin1Char(' '), 1).toUInt());
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    m_judge.tellGarbage();
    m_terminal.write(bytes);
    m_log.event(QStringLiteral("garbage"), QString::number(count));
}

void Perforator::doTape(const QString &path)
{
    m_options.tapeFile = path;
    changeTape(path);
}

void Perforator::doTapeCodes(const QString &path)
{
    m_options.tapeFile.clear();
    m_options.tapeCodesFile = path;
    changeTape(path);
}

void Perforator::changeTape(const QString &path)
{
    if (mountTape())
        m_log.event(QStringLiteral("tape"), QString::number(m_tape.size()));
    else
        m_log.event(QStringLiteral("error"), QStringLiteral("no tape ") + path);
}

void Perforator::doRewind(const QString &)
{
    m_tapeAt = 0;
    m_log.event(QStringLiteral("rewound"));
}

void Perforator::doQuit(const QString &)
{
    emit quit();
}
