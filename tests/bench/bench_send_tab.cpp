#include "app/clock.h"
#include "records/send_model.h"
#include "tests/bench/ratio.h"
#include "tests/e2e/process_memory.h"
#include "tests/ui/window/send_tab.h"

#include <QApplication>

#include <unistd.h>

// The tab "Передача" with 2,000 rows on show, one of them selected and its text on view. A scan runs within a
// tick of one second, of which it may take a tenth, with all that the window does for it. The memory stays
// where it is, however often a long telegram is looked at.

namespace
{
constexpr int FileCount = 2000;
constexpr int Chosen = 1234;

enum Change { Nothing, TenMove, AllMove };

QString nameOf(int file)
{
    return QStringLiteral("202607%1u%2").arg(10 + file / 1000).arg(file % 1000, 3, 10, QChar('0'));
}

void writeRecord(const SendTab &tab, int file, int minutesAgo)
{
    const QDateTime time = QDateTime(QDate(2026, 7, 31), QTime(12, 0)).addSecs(-60LL * minutesAgo);
    const QString record = QStringLiteral("%1|S|%2|u|3|N|НЕТ ОТВЕТА")
                               .arg(1000000 + file)
                               .arg(time.toString(CTime::formatDD_MM_YYYY_HH_MM));
    tab.desk.write(QStringLiteral("out/") + nameOf(file) + QStringLiteral(".dat"), record.toUtf8());
}

void fill(SendTab &tab)
{
    for (int file = 0; file < FileCount; ++file) {
        tab.queue(nameOf(file));
        writeRecord(tab, file, FileCount - file);
    }
    tab.form->scanDir();
    tab.waiting->selectRow(SendTab::names(tab.waiting).indexOf(nameOf(Chosen)));
    QCoreApplication::processEvents();
}

/// Ten rows change places with others, those on show among them, or the whole order turns round.
void moveRows(const SendTab &tab, int change, bool &there)
{
    there = !there;
    const int step = change == TenMove ? FileCount / 10 : 1;
    for (int file = 0; file < FileCount; file += step)
        writeRecord(tab, file, there ? file / step : FileCount - file);
}

void scanOnShow(benchmark::State &state)
{
    SendTab tab(int(state.range(0)));
    fill(tab);
    bool there = false;
    for (auto _ : state) {
        if (state.range(1) != Nothing) {
            state.PauseTiming();
            moveRows(tab, int(state.range(1)), there);
            state.ResumeTiming();
        }
        tab.form->scanDir();
        QCoreApplication::processEvents();
        if (SendTab::selected(tab.waiting) != nameOf(Chosen))
            state.SkipWithError("the selection was lost");
    }
}
BENCHMARK(scanOnShow)->ArgsProduct({{CKS, SKK}, {Nothing, TenMove, AllMove}})->Unit(benchmark::kMillisecond);

void select(const SendTab &tab, int times)
{
    for (int i = 0; i < times; ++i) {
        for (const int file : {0, 1}) {
            tab.waiting->selectRow(file);
            QCoreApplication::processEvents();
        }
    }
}

/// False if the memory grows with the selections of a file of a megabyte.
bool memoryStays()
{
    constexpr double Bar = 1.1;
    SendTab tab(CKS);
    const QByteArray line = QString(68, QChar(0x0416)).toUtf8() + "\r\n";
    tab.queue(nameOf(0), line.repeated((1 << 20) / line.size()));
    tab.queue(nameOf(1));
    tab.form->scanDir();
    select(tab, 10);
    const double after10 = double(residentKilobytes(getpid()));
    select(tab, 990);
    const double ratio = double(residentKilobytes(getpid())) / after10;
    std::printf("bench: memory after 1,000 selections of a file of 1 MB, of that after 10 | %.3f | bar <= "
                "%.3g | %s\n",
                ratio, Bar, ratio <= Bar ? "ok" : "MISSED");
    return ratio <= Bar;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const bool stays = memoryStays();
    constexpr double Tenth = 0.1; // of the tick, the second that stands for the baseline
    const int status =
        Ratio::run(argc, argv,
                   {{"scan with 2,000 rows on show, CKS, in ticks", "scanOnShow/0/0", nullptr, Tenth},
                    {"scan with 2,000 rows on show, SKK, in ticks", "scanOnShow/1/0", nullptr, Tenth},
                    {"the same, SKK, ten rows change places", "scanOnShow/1/1", nullptr, Tenth},
                    {"the same, SKK, the whole order turns round", "scanOnShow/1/2", nullptr, Tenth}});
    return stays ? status : 1;
}
