#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

/// The time of some programs, which runs at a speed and can be stepped while they run; see stepped_clock.cpp.
/// Zone and daylight saving are those of the environment.
class SteppedTime
{
public:
    /// Begins at \a begin, and for all programs that tests start from now on.
    SteppedTime(const QDateTime &begin, int speed);

    [[nodiscard]] QDateTime now() const;  ///< to some seconds
    [[nodiscard]] QString clock() const;  ///< of libfaketime, for a program that starts now
    void stepTo(const QDateTime &moment); ///< all programs

    /// The workstation alone, which is told of its file by STEPPED_CLOCK.
    void stepWorkstation(qint64 ms);
    [[nodiscard]] QString workstationFile() const { return m_workstation.fileName(); }

private:
    void write();

    const QDateTime m_begin;
    const int m_speed;
    QElapsedTimer m_since;
    qint64 m_stepMs = 0, m_ownMs = 0;
    QTemporaryDir m_directory;
    QFile m_all, m_workstation;
};
