#include "tests/bench/ratio.h"

#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "ui/roll/protocol_widget.h"

#include <QApplication>
#include <QCheckBox>

#include <memory>

namespace
{
constexpr int ShortDay = 1000;
constexpr int LongDay = 200000;

/// A day of the given length on the screen. Every tenth line is an event, the others come and go in turn.
class Day
{
public:
    explicit Day(int64_t count)
    {
        QStringList lines;
        for (int i = 0; i < int(count); ++i)
            lines << line(i);
        Log.lines = lines;
        State.manualMode = true;
        view = std::make_unique<CProtocolWidget>(&Log);
        view->resize(900, 600);
        view->show();
        QApplication::processEvents();
        Log.add(QStringLiteral("НАЧАЛО\r\n"), ProtocolReceived); // brings the file up to date
        view->reset();
        QApplication::processEvents();
    }
    [[nodiscard]] QCheckBox *box(const char *name) const
    {
        return view->findChild<QCheckBox *>(QLatin1String(name));
    }
    void check(const char *name, bool on) const
    {
        box(name)->setChecked(on);
        QApplication::processEvents();
    }

    std::unique_ptr<CProtocolWidget> view;

private:
    static QString line(int i)
    {
        if (i % 10 == 0)
            return QChar(ProtocolInfo) + QStringLiteral("12:00:00 Канал установлен");
        return QChar(i % 2 ? ProtocolReceived : ProtocolSent) +
               QStringLiteral("|ЗЦЗЦ #%1 |ТЕЛЕГРАММА ИЗ ПЯТИДЕСЯТИ СЕМИ ЗНАКОВ #123<>").arg(i, 6);
    }
};

void scroll(benchmark::State &state, const Day &day)
{
    int pages = 0;
    for (auto _ : state) {
        day.view->movePage(++pages % 8 < 4 ? -1 : 1);
        QApplication::processEvents();
    }
}

void append(benchmark::State &state)
{
    for (auto _ : state) {
        Log.add(QStringLiteral("НОВАЯ СТРОКА\r\n"), ProtocolReceived);
        QApplication::processEvents();
    }
}

void ScrollPage(benchmark::State &state)
{
    const Day day(state.range(0));
    scroll(state, day);
}

void ScrollPageOfSplitView(benchmark::State &state)
{
    const Day day(state.range(0));
    day.check("protocolSplit", true);
    scroll(state, day);
}

void AppendLine(benchmark::State &state)
{
    const Day day(state.range(0));
    append(state);
}

void AppendLineWithoutInformation(benchmark::State &state)
{
    const Day day(state.range(0));
    day.check("protocolInfo", false);
    append(state);
}

void AppendLineToSplitView(benchmark::State &state)
{
    const Day day(state.range(0));
    day.check("protocolSplit", true);
    append(state);
}

/// \a times rebuilds, so that both days handle as many lines; without the repaints, which are the same.
void rebuild(benchmark::State &state, const Day &day, int times)
{
    QCheckBox *split = day.box("protocolSplit");
    for (auto _ : state) {
        for (int i = 0; i < times; ++i) {
            split->setChecked(true);
            split->setChecked(false);
        }
    }
}

void SplitLongDay(benchmark::State &state)
{
    const Day day(LongDay);
    rebuild(state, day, 1);
}

void SplitShortDays(benchmark::State &state)
{
    const Day day(ShortDay);
    rebuild(state, day, LongDay / ShortDay);
}

BENCHMARK(ScrollPage)->Arg(ShortDay)->Arg(LongDay)->Iterations(300);
BENCHMARK(ScrollPageOfSplitView)->Arg(ShortDay)->Arg(LongDay)->Iterations(300);
BENCHMARK(AppendLine)->Arg(ShortDay)->Arg(LongDay)->Iterations(300);
BENCHMARK(AppendLineWithoutInformation)->Arg(ShortDay)->Arg(LongDay)->Iterations(300);
BENCHMARK(AppendLineToSplitView)->Arg(ShortDay)->Arg(LongDay)->Iterations(300);
BENCHMARK(SplitLongDay)->Iterations(2);
BENCHMARK(SplitShortDays)->Iterations(2);

// The names have no iteration count: it is no argument.
const std::vector<Ratio::Row> rows = {
    {"roll: scroll by a page, 200,000 lines against 1,000", "ScrollPage/200000", "ScrollPage/1000", 1.3},
    {"roll: scroll the split view, 200,000 lines against 1,000", "ScrollPageOfSplitView/200000",
     "ScrollPageOfSplitView/1000", 1.3},
    {"roll: append a line, 200,000 lines against 1,000", "AppendLine/200000", "AppendLine/1000", 1.3},
    {"roll: append without information, 200,000 lines against 1,000", "AppendLineWithoutInformation/200000",
     "AppendLineWithoutInformation/1000", 1.3},
    {"roll: append to the split view, 200,000 lines against 1,000", "AppendLineToSplitView/200000",
     "AppendLineToSplitView/1000", 1.3},
    {"roll: split one day of 200,000 lines against 200 of 1,000", "SplitLongDay", "SplitShortDays",
     1.1}, // as fast, up to what one run differs from another
};
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const Desk desk;
    return Ratio::run(argc, argv, rows);
}
