#include "app/clock.h"
#include "records/protocol.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

#include <QFile>

// What a start reads of today's journal: 20 MB must not keep the window waiting much longer than reading them
// takes.

namespace
{
constexpr qint64 Size = 20 << 20; // bytes

QByteArray lineOfTheDay(int i)
{
    switch (i % 12) {
    case 0:
        return "\3" + QTime(i / 3600 % 24, i / 60 % 60, i % 60).toString().toUtf8() +
               " ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731/20260731u001";
    case 11: return "\1ЗЦЗЦ ААА" + QByteArray::number(i % 1000) + " 1234 МОСКВА 12 31 1205=<>";
    default: return "\1ПРИБУДЕМ ПЯТНИЦУ ПОЕЗДОМ 32 ВАГОН " + QByteArray::number(i % 20) + " ВСТРЕЧАЙТЕ=<>";
    }
}

/// A day of the size, as the line and its events leave it.
void writeDay(const Desk &desk)
{
    QByteArray day;
    for (int i = 0; day.size() < Size; ++i)
        day += lineOfTheDay(i) + '\n';
    desk.write("prt/20260731.prt", day);
}

void load(benchmark::State &state)
{
    const Desk desk;
    writeDay(desk);
    for (auto _ : state)
        Log.Load();
    if (Log.lines.size() < 100000)
        state.SkipWithError("the journal was not read");
    Log.lines.clear();
}
BENCHMARK(load);

/// The least that a reader has to do.
void plainLoop(benchmark::State &state)
{
    const Desk desk;
    writeDay(desk);
    QStringList lines;
    for (auto _ : state) {
        QFile file(Log.pathForDate(Time.date));
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("no journal");
        lines = QString::fromUtf8(file.readAll()).split('\n');
    }
    if (lines.size() < 100000)
        state.SkipWithError("the journal was not read");
}
BENCHMARK(plainLoop);
} // namespace

int main(int argc, char **argv)
{
    return Ratio::run(argc, argv,
                      {{"journal of 20 MB read: Load to a plain loop", "load", "plainLoop", 1.3}});
}
