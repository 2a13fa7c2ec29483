#include "app/clock.h"
#include "app/options.h"
#include "records/send_model.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

#include <QFile>

// The scan of a queue of 2,000 files with side-cars. It runs within a tick of one second, of which it may
// take a tenth. What reading the side-cars alone takes on the same disk stands beside it.

namespace
{
constexpr int FileCount = 2000;
constexpr int FirstScan = 0; // into empty lists, against the order of the rows
constexpr int NextScan = 1;

QString queueName(int file)
{
    return QStringLiteral("out/202607%1u%2").arg(10 + file / 1000).arg(file % 1000, 3, 10, QChar('0'));
}

/// One queue with side-cars, three in four to a subscriber, at times that run against the names, one in ten
/// without tries; and one of the direct link.
void makeQueue(const Desk &desk)
{
    const QDateTime noon(QDate(2026, 7, 31), QTime(12, 0));
    for (int file = 0; file < FileCount; ++file) {
        const QString record = QStringLiteral("%1|S|%2|u|%3|N|НЕТ ОТВЕТА")
                                   .arg(file % 4 == 0 ? QString() : QString::number(1000000 + file))
                                   .arg(noon.addSecs(-60 * file).toString(CTime::formatDD_MM_YYYY_HH_MM))
                                   .arg(file % 10 == 0 ? 0 : 3);
        const QString stamp = noon.addSecs(-60 * file).toString(QStringLiteral("yyMMdd_hhmmss"));
        desk.write(QStringLiteral("direct/20260731u001.") + stamp, "TEXT");
        desk.write(queueName(file), "TEXT");
        desk.write(queueName(file) + QStringLiteral(".dat"), record.toUtf8());
    }
}

void scan(benchmark::State &state)
{
    Options.processMode = int(state.range(0));
    Options.pathOut = Options.processMode == Direct ? QStringLiteral("direct") : QStringLiteral("out");
    CTableViewModel_Send good;
    CTableViewModel_SendBad bad;
    for (auto _ : state) {
        if (state.range(1) == FirstScan) {
            good.clear();
            bad.clear();
        }
        if (applySendQueue(scanSendQueue(), good, bad) != FileCount)
            state.SkipWithError("not all files were found");
    }
}
BENCHMARK(scan)->ArgsProduct({{0, 1, Direct}, {FirstScan, NextScan}})->Unit(benchmark::kMillisecond);

void readSideCars(benchmark::State &state)
{
    for (auto _ : state) {
        for (int number = 0; number < FileCount; ++number) {
            QFile file(queueName(number) + QStringLiteral(".dat"));
            if (!file.open(QIODevice::ReadOnly))
                state.SkipWithError("a side-car is missing");
            benchmark::DoNotOptimize(file.readAll());
        }
    }
}
BENCHMARK(readSideCars)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const Desk desk;
    makeQueue(desk);
    constexpr double Tenth = 0.1; // of the tick, the second that stands for the baseline
    return Ratio::run(argc, argv,
                      {{"queue scan of 2,000 files, CKS, first, in ticks", "scan/0/0", nullptr, Tenth},
                       {"queue scan of 2,000 files, CKS, next, in ticks", "scan/0/1", nullptr, Tenth},
                       {"queue scan of 2,000 files, SKK, first, in ticks", "scan/1/0", nullptr, Tenth},
                       {"queue scan of 2,000 files, SKK, next, in ticks", "scan/1/1", nullptr, Tenth},
                       {"queue scan of 2,000 files, direct, first, in ticks", "scan/2/0", nullptr, Tenth},
                       {"queue scan of 2,000 files, direct, next, in ticks", "scan/2/1", nullptr, Tenth},
                       {"queue scan, SKK, against reading the side-cars", "scan/1/1", "readSideCars", 5.0}});
}
