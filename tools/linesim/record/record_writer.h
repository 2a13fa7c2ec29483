#pragma once

#include "tools/linesim/record/line_record.h"

#include <QElapsedTimer>
#include <QFile>

class EventLog;

/// Writes a line record while the line is alive: each event stands in the file before the next is looked at,
/// so that a tap that is killed has lost nothing. A disk that fails is told once, as the event "error", and
/// as a breach, so that nobody takes the record for whole; the line itself goes on.
class RecordWriter
{
public:
    RecordWriter(const QString &path, EventLog &log);

    /// Begins a new record over a former file; false, with an event, if it cannot be written.
    [[nodiscard]] bool start();
    void write(int connection, LineRecord::Side side, LineRecord::Kind kind,
               const QByteArray &bytes = QByteArray());

private:
    [[nodiscard]] bool put(const QByteArray &line);

    EventLog &m_log;
    QFile m_file;
    QElapsedTimer m_clock;
    bool m_failed = false;
};
