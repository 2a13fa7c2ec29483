#include "app/options.h"
#include "link/tlg_thread.h"
#include "procedures/process_skk.h"
#include "tests/bench/ratio.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QApplication>

// Received text may be dear: a call that is taken and ended stores a transcript, and a character may journal
// a line. Whatever a flood holds, the window must come back to the tick in time.

namespace
{
constexpr int Flood = 256 * 1024; ///< characters that wait
constexpr double Turn = 0.2;      ///< seconds that one turn of the event loop may take

void turn(benchmark::State &state, int processMode, const QString &words, bool connected = false)
{
    const Station station(processMode);
    const QString flood = words.repeated(Flood / words.size());
    for (auto _ : state) {
        state.PauseTiming();
        (void)TlgThread.recvBuffer.mTake();
        (void)station.desk.sent();
        station.form->receiver.moreToReceive = false;
        if (connected)
            ProcessSKK.setCallDirection(Incoming);
        TlgThread.recvBuffer.mAppend(flood);
        state.ResumeTiming();
        station.form->slotOnTlgReceived();
    }
}

void Calls(benchmark::State &state)
{
    turn(state, SKK, QStringLiteral("@C@H"));
}

void Telegrams(benchmark::State &state)
{
    turn(state, SKK, QStringLiteral("ЗЦЗЦ НННН  "), true);
}

void Lines(benchmark::State &state)
{
    turn(state, Direct, QStringLiteral("\n"));
}

BENCHMARK(Calls)->UseRealTime();
BENCHMARK(Telegrams)->UseRealTime();
BENCHMARK(Lines)->UseRealTime();

const std::vector<Ratio::Row> rows = {
    {"window: a turn of a flood of calls, against a fifth of a second", "Calls", nullptr, 1.5, Turn},
    {"window: a turn of a flood of telegrams, against a fifth of a second", "Telegrams", nullptr, 1.5, Turn},
    {"window: a turn of a flood of lines, against a fifth of a second", "Lines", nullptr, 1.5, Turn},
};
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    return Ratio::run(argc, argv, rows);
}
