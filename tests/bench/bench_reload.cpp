#include "app/options.h"
#include "records/file_attr.h"
#include "records/io_model.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

#include <QApplication>
#include <QFile>
#include <QTableView>

// The reload of a day of 5,000 files, in a table with a row selected. It runs with each scan of the queue,
// within a tick of one second, of which it may take a fifth.

namespace
{
constexpr int FileCount = 5000;
enum Change { Begin, Nothing, OneFile, EverySecondFile };

QString fileName(int file)
{
    return QStringLiteral("inp/20260731/20260731u%1.%2").arg(file / 1000).arg(file % 1000, 3, 10, QChar('0'));
}

void makeDay(const Desk &desk)
{
    for (int file = 0; file < FileCount; ++file) {
        desk.write(fileName(file), "TEXT");
        if (file % 3 == 0)
            CFileAttr(fileName(file)).setNew();
    }
}

/// What stands on the disk differs from what is on show.
void changeDisk(int change, bool back)
{
    const int step = change == EverySecondFile ? 2 : FileCount;
    for (int file = 1; file < FileCount; file += step) {
        const QString name = fileName(file), other = name + QStringLiteral(".moved");
        QFile::rename(back ? other : name, back ? name : other);
    }
}

void reload(benchmark::State &state)
{
    const int change = int(state.range(0));
    CTableViewModel_IO model;
    QTableView view;
    view.setModel(&model);
    view.show();
    model.dirPath = QStringLiteral("inp/20260731");
    model.reloadFromDir();
    view.selectRow(FileCount / 2);
    bool back = false;
    for (auto _ : state) {
        state.PauseTiming();
        if (change == Begin)
            model.clear();
        if (change > Nothing)
            changeDisk(change, back);
        back = !back;
        state.ResumeTiming();
        model.reloadFromDir();
    }
    if (back)
        changeDisk(change, back);
    if (model.rowCount() != FileCount || (change != Begin && !view.currentIndex().isValid()))
        state.SkipWithError("rows were lost");
}
BENCHMARK(reload)
    ->Arg(Begin)
    ->Arg(Nothing)
    ->Arg(OneFile)
    ->Arg(EverySecondFile)
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const Desk desk;
    makeDay(desk);
    constexpr double Fifth = 0.2; // of the tick, the second that stands for the baseline
    return Ratio::run(
        argc, argv,
        {{"reload of a day of 5,000 files, first, in ticks", "reload/0", nullptr, Fifth},
         {"reload of a day of 5,000 files, nothing changed, in ticks", "reload/1", nullptr, Fifth},
         {"reload of a day of 5,000 files, one exchanged, in ticks", "reload/2", nullptr, Fifth},
         {"reload of a day of 5,000 files, half exchanged, in ticks", "reload/3", nullptr, Fifth}});
}
