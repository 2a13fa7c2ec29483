#pragma once

#include "tools/linesim/record/line_record.h"

#include <QObject>

/// A line with a tap in it: what either side does is done to the other at once, and told.
class TappedLine : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] virtual bool
    start() = 0;            ///< false, with an event in the log, if there is no line to be had
    virtual void cut() = 0; ///< breaks what is open, to both sides
    /// Does that as soon as \a bytes more have passed, of both sides together and over any number of
    /// connections; 0 and less never.
    void cutAfter(int bytes) { m_left = bytes; }

signals:
    void cutting(); ///< the bytes are through
    void opened(int connection, LineRecord::Side by);
    void closed(int connection, LineRecord::Side by);
    void passed(int connection, LineRecord::Side from, const QByteArray &bytes);

protected:
    /// What of \a bytes, which one side has said, still passes in front of a cut that is due.
    [[nodiscard]] QByteArray untilCut(const QByteArray &bytes);

private:
    void cutNow();

    int m_left = 0;     // bytes until the cut; 0 for none
    bool m_due = false; // it is to be done now
};
