// The workstation tells what its ticks cost: for each day, as it ends, "ticks: 20280229 COUNT MEAN MOST", the
// last two in microseconds of the main thread. The file TICK_FILE holds the time of the last tick,
// "12:34:56".

#include "app/clock.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>

namespace
{
qint64 threadUs()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000000LL + usage.ru_utime.tv_usec +
           usage.ru_stime.tv_usec;
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

struct TickTimes {
    QString date;
    qint64 begin = 0, sum = 0, most = 0;
    int count = 0;

    void takeEnd()
    {
        const qint64 end = threadUs();
        tell();
        if (date != Time.yyyyMMdd && count > 0) {
            std::printf("ticks: %s %d %lld %lld\n", qPrintable(date), count,
                        static_cast<long long>(sum / count), static_cast<long long>(most));
            std::fflush(stdout);
            *this = TickTimes{Time.yyyyMMdd, 0, 0, 0, 0};
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
    QObject::connect(&Time, &CTime::signal_1sec, qApp, [] { times.begin = threadUs(); });
    QTimer::singleShot(0, qApp,
                       [] { QObject::connect(&Time, &CTime::signal_1sec, qApp, [] { times.takeEnd(); }); });
}
Q_COREAPP_STARTUP_FUNCTION(beginToMeasure)
} // namespace
