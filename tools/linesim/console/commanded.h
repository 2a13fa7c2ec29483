#pragma once

#include "tools/linesim/console/event_log.h"

#include <QObject>

/// What takes commands of a script or a person, one a line: a name, and behind a blank its argument. "quit"
/// is known to all.
class Commanded : public QObject
{
    Q_OBJECT

public:
    /// Runs one command; an unknown one is the event "error", an empty one nothing.
    void run(const QString &command);

signals:
    void quit();

protected:
    explicit Commanded(EventLog &log) : m_log(log) {}

    /// Runs one of its own commands; false if it is none of them.
    [[nodiscard]] virtual bool runOwn(const QString &name, const QString &argument) = 0;
    virtual void finish() {} ///< the last word in the log before quit()

    EventLog &m_log;
};
