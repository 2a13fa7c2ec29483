#include "app/options.h"
#include "records/protocol.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

// What one character of line text costs in the journal: a full day must not make the line any slower.

namespace
{
enum Mode { ClosedEachTime, KeptOpen, KeptOpenFlushed };

constexpr int LineCount = 150000;
constexpr int LineLength = 70; // with its mark, in a day of 10 MB
constexpr int FullDay = 1;

/// A day as the line leaves it, already on disk.
QStringList linesOfTheDay()
{
    QStringList lines;
    for (int line = 0; line < LineCount; ++line)
        lines << QChar(ProtocolReceived) + QString(LineLength - 1, QChar('A' + line % 26));
    return lines << QString();
}

void addCharacter(benchmark::State &state)
{
    const Desk desk;
    Options.protocolFileNoClose = state.range(0) != ClosedEachTime;
    if (state.range(1) == FullDay)
        Log.lines = linesOfTheDay();
    Log.add(QStringLiteral("A"), ProtocolReceived); // the first save looks at the whole file
    const QString character = QStringLiteral("B");
    for (auto _ : state) {
        Log.flushRequested = state.range(0) == KeptOpenFlushed;
        Log.add(character, ProtocolReceived);
    }
    if (desk.names(QStringLiteral("prt")).size() != 1)
        state.SkipWithError("no journal was written");
}
BENCHMARK(addCharacter)->ArgsProduct({{ClosedEachTime, KeptOpen, KeptOpenFlushed}, {0, FullDay}});
} // namespace

int main(int argc, char **argv)
{
    return Ratio::run(
        argc, argv,
        {{"journal add, file closed each time: 10 MB day to empty day", "addCharacter/0/1",
          "addCharacter/0/0", 1.2},
         {"journal add, file kept open: 10 MB day to empty day", "addCharacter/1/1", "addCharacter/1/0", 1.2},
         {"journal add, kept open, flushed: 10 MB day to empty day", "addCharacter/2/1", "addCharacter/2/0",
          1.2}});
}
