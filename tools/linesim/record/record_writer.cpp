#include "tools/linesim/record/record_writer.h"

#include "tools/linesim/console/event_log.h"

#include <QDateTime>

RecordWriter::RecordWriter(const QString &path, EventLog &log) : m_log(log), m_file(path) {}

bool RecordWriter::start()
{
    m_clock.start();
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        put("# a line record: seconds, connection, W workstation or F far end, bytes; begun " +
            QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1()))
        return true;
    m_log.event(QStringLiteral("error"), m_file.fileName() + QLatin1String(": ") + m_file.errorString());
    return false;
}

void RecordWriter::write(int connection, LineRecord::Side side, LineRecord::Kind kind,
                         const QByteArray &bytes)
{
    if (m_failed || put(recordLine({m_clock.nsecsElapsed() / 1000, connection, side, kind, bytes})))
        return;
    m_failed = true;
    m_log.event(QStringLiteral("error"), m_file.fileName() + QLatin1String(": ") + m_file.errorString());
    m_log.violation(QStringLiteral("the record ends here"));
}

bool RecordWriter::put(const QByteArray &line)
{
    return m_file.write(line + '\n') == line.size() + 1;
}
