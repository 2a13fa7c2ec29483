#pragma once

#include <QElapsedTimer>
#include <QVector>

/// Writes down how the program moves the DTR line of its serial ports. A pseudo-terminal has no such line and
/// tells nothing, so this stands in the place of the call to the system and passes everything on to it.
class DtrWatch
{
public:
    struct Change {
        bool high;
        qint64 ms; ///< since the watch began
    };

    DtrWatch();
    ~DtrWatch();
    DtrWatch(const DtrWatch &) = delete;
    DtrWatch &operator=(const DtrWatch &) = delete;

    [[nodiscard]] qint64 now() const { return m_clock.elapsed(); }
    void note(bool high) { changes.append({high, now()}); }

    QVector<Change> changes;

private:
    QElapsedTimer m_clock;
};
