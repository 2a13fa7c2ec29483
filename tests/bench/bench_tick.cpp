#include "app/clock.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/ui/window/station.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

// The window's second over a busy week on a direct link, each of its ticks: a telegram each way every five
// minutes, midnights, a journal and directories that grow. Every second is timed, whatever falls into it.

namespace
{
constexpr int SecondsOfDay = 86400;
constexpr int Days = 7;
constexpr int Every = 300;       ///< seconds between two telegrams of one direction
constexpr double TickBarMs = 50; ///< for all ticks but one in a thousand

const QByteArray Letter = "ЗЦЗЦ 1\r\nПРИБУДЕМ ПЯТНИЦУ ПОЕЗДОМ 32 ВСТРЕЧАЙТЕ=\r\nНННН  ";

void queueOne(const Station &station, int second)
{
    const QString number = QStringLiteral("%1").arg(second % SecondsOfDay / Every, 3, 10, QLatin1Char('0'));
    station.desk.write("out/" + Time.yyyyMMdd + 'u' + number + ".260101_000000", Letter);
}

/// Milliseconds of each tick; traffic comes and goes in between.
std::vector<double> passWeek(Station &station)
{
    std::vector<double> ticks;
    for (int second = 0; second < Days * SecondsOfDay; ++second) {
        if (second % Every == 60)
            queueOne(station, second);
        if (second % Every == 180)
            station.receive(QString::fromUtf8(Letter));
        if (State.fileInProgress)
            station.reportSent(TlgThread.sendBuffer.mTake());
        QElapsedTimer timer;
        timer.start();
        station.tick();
        ticks.push_back(double(timer.nsecsElapsed()) / 1e6);
        QCoreApplication::processEvents();
    }
    return ticks;
}

double percentile(std::vector<double> sorted, double part)
{
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(size_t(part * double(sorted.size() - 1)));
}

/// Telegrams of one direction that stand in the directories of their days.
int stored(const Station &station, const QString &directory)
{
    int count = 0;
    const QDir root(station.desk.path(directory));
    for (const QString &day : root.entryList({QStringLiteral("????????")}, QDir::Dirs))
        count += int(QDir(root.filePath(day)).entryList(QDir::Files).size());
    return count;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Station station(Direct);
    station.setLinkUp(true);
    const std::vector<double> ticks = passWeek(station);
    const int all = Days * SecondsOfDay / Every;
    if (stored(station, "inp") != all || stored(station, "out") != all) {
        std::printf("of %d telegrams came %d, went %d\n", all, stored(station, "inp"),
                    stored(station, "out"));
        return 1;
    }
    std::printf("tick: median %.3f ms, 99th percentile %.3f ms, longest %.1f ms\n", percentile(ticks, 0.5),
                percentile(ticks, 0.99), percentile(ticks, 1));
    const double part = percentile(ticks, 0.999) / TickBarMs;
    const bool ok = part <= 1;
    std::printf("bench: tick of a busy week, 99.9th percentile to 50 ms | %.3f | bar <= 1 | %s\n", part,
                ok ? "ok" : "MISSED");
    return ok ? 0 : 1;
}
