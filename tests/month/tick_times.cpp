// The workstation tells what its ticks cost: for each day, as it ends, "ticks: 20280229 COUNT MEAN MOST", the
// last two in microseconds of the main thread; and "lasted: COUNT P999 MOST", how long those of all days so
// far took by a clock on the wall, 99.9 % and all of them, in microseconds. The file TICK_FILE holds the time
// of the last tick, "12:34:56".

#include "app/clock.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace
{
qint64 threadUs()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000000LL + usage.ru_utime.tv_usec +
           usage.ru_stime.tv_usec;
}

/// Of the machine: the program's clocks are false.
qint64 wallUs()
{
    timespec now{};
    syscall(SYS_clock_gettime, CLOCK_MONOTONIC_RAW, &now);
    return now.tv_sec * 1000000LL + now.tv_nsec / 1000;
}

/// What time the program has it.
void tell()
{
    static QFile file(qEnvironmentVariable("TICK_FILE"));
    if (!file.isOpen() && !file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    file.seek(0);
    file.write(Time.hh_mm_ss.toUtf8());
}

/// How long ticks lasted; there is room for those of a week, so that the memory stays flat.
class Lasting
{
public:
    void take(qint64 us)
    {
        if (m_count < m_times.size())
            m_times[m_count++] = us;
    }
    void tellAll() const
    {
        std::vector<qint64> sorted(m_times.begin(), m_times.begin() + long(m_count));
        std::sort(sorted.begin(), sorted.end());
        std::printf("lasted: %zu %lld %lld\n", m_count,
                    static_cast<long long>(sorted.at(size_t(0.999 * double(m_count - 1)))),
                    static_cast<long long>(sorted.back()));
        std::fflush(stdout);
    }

private:
    std::vector<qint64> m_times = std::vector<qint64>(40000);
    size_t m_count = 0;
};

Lasting lasting;

struct TickTimes {
    QString date;
    qint64 begin = 0, sum = 0, most = 0, wall = 0;
    int count = 0;

    void takeEnd()
    {
        const qint64 end = threadUs();
        lasting.take(wallUs() - wall);
        tell();
        if (date != Time.yyyyMMdd && count > 0) {
            std::printf("ticks: %s %d %lld %lld\n", qPrintable(date), count,
                        static_cast<long long>(sum / count), static_cast<long long>(most));
            lasting.tellAll();
            *this = TickTimes{Time.yyyyMMdd, 0, 0, 0, 0, 0};
            return; // the tick that changes the day is one of a kind
        }
        date = Time.yyyyMMdd;
        const qint64 us = end - begin;
        sum += us;
        most = qMax(most, us);
        ++count;
    }
};

TickTimes times;

/// The first to hear of a tick, and the last, when the window is there.
void beginToMeasure()
{
    QObject::connect(&Time, &CTime::signal_1sec, qApp, [] {
        times.begin = threadUs();
        times.wall = wallUs();
    });
    QTimer::singleShot(0, qApp,
                       [] { QObject::connect(&Time, &CTime::signal_1sec, qApp, [] { times.takeEnd(); }); });
}
Q_COREAPP_STARTUP_FUNCTION(beginToMeasure)
} // namespace
