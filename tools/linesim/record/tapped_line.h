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

signals:
    void opened(int connection, LineRecord::Side by);
    void closed(int connection, LineRecord::Side by);
    void passed(int connection, LineRecord::Side from, const QByteArray &bytes);
};
