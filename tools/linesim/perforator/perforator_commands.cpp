#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/noise.h"
#include "tools/linesim/perforator/perforator.h"

bool Perforator::runOwn(const QString &name, const QString &argument)
{
    static const Command<Perforator> commands[] = {
        // Nothing is punched, and there is no room; and the end of it
        {"jam", [](Perforator &p, const QString &) { p.setJammed(true); }},
        {"unjam", [](Perforator &p, const QString &) { p.setJammed(false); }},
        // So many random bytes; a seed repeats them
        {"garbage", [](Perforator &p, const QString &countAndSeed) { p.sendGarbage(countAndSeed); }},
        // Another tape in the reader, a file like that of --tape or --tape-codes
        {"tape", [](Perforator &p, const QString &path) { p.changeTape(path, QString()); }},
        {"tape-codes", [](Perforator &p, const QString &path) { p.changeTape(QString(), path); }},
        {"rewind",
         [](Perforator &p, const QString &) {
             p.m_tapeAt = 0;
             p.m_log.event(QStringLiteral("rewound"));
         }},
    };
    return runFrom(commands, *this, name, argument) || SerialDevice::runOwn(name, argument);
}

void Perforator::setJammed(bool jammed)
{
    m_jammed = jammed;
    m_log.event(jammed ? QStringLiteral("jammed") : QStringLiteral("unjammed"));
}

void Perforator::sendGarbage(const QString &countAndSeed)
{
    constexpr int Most = 4096; // a port holds no more
    const QByteArray bytes = noiseOf(countAndSeed).left(Most);
    m_judge.tellGarbage();
    m_port.write(bytes);
    m_log.event(QStringLiteral("garbage"), QString::number(bytes.size()));
}

void Perforator::changeTape(const QString &textFile, const QString &codesFile)
{
    m_options.tapeFile = textFile;
    m_options.tapeCodesFile = codesFile;
    if (mountTape())
        m_log.event(QStringLiteral("tape"), QString::number(m_tape.size()));
    else
        m_log.event(QStringLiteral("error"), QStringLiteral("no tape ") + textFile + codesFile);
}
