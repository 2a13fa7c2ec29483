#pragma once

#include "tests/support/patience.h"

#include <QProcess>
#include <QStringList>

/// A program run by a test, whose output is read line by line. At the end of its life it is killed.
class Child
{
public:
    Child();
    virtual ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    [[nodiscard]] bool waitForEnd(int seconds); ///< false if it still runs then
    /// Ended by itself, not by a signal, with the status \a status.
    [[nodiscard]] bool endedWith(int status) const;
    void kill();      ///< at once, as a power failure would, and waits for it
    void terminate(); ///< asks it to end in order
    [[nodiscard]] bool isRunning() const { return process.state() == QProcess::Running; }

    QProcess process;
    QStringList lines; ///< of standard output and standard error, without line ends

private:
    void read();

    qint64 m_id = 0;
    QByteArray m_cut; // a line that has not come whole yet
};
