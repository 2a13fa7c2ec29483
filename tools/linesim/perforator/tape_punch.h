#pragma once

#include "tools/linesim/console/event_log.h"
#include "tools/linesim/serial/mtk2_code.h"

#include <QByteArray>
#include <QFile>

/// Punches codes on tape, with a queue of those that wait.
class TapePunch
{
public:
    explicit TapePunch(EventLog &log) : m_log(log) {}

    /// Opens the files that get what is punched, each if named; false if that fails.
    [[nodiscard]] bool open(const QString &codesFile, const QString &textFile);
    void add(char code) { m_queue += code; }
    [[nodiscard]] int waiting() const { return m_queue.size(); }
    /// Punches up to \a count codes. When none waits any more, what was punched is the event "punched".
    void punch(int count);

private:
    EventLog &m_log;
    QFile m_codes, m_text;
    QByteArray m_queue;
    QString m_untold;
    Mtk2::Register m_register = Mtk2::Latin;
};
