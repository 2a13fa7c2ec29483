#include "app/options.h"
#include "app/state.h"
#include "procedures/process_skk.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

// A dialled connection is scanned with each character that comes. What it already holds must not make the
// next character dear.

namespace
{
constexpr int Short = 1024;
constexpr int Long = 100 * 1024;
constexpr int Await = 16 * 1024;
constexpr int Batch = 256; ///< characters of one measured run

/// A connection whose buffer holds \a begin and then text, \a size characters in all.
void open(const QString &begin, int size)
{
    const QString words = QStringLiteral("|ТЕКСТ #12.30 &TEXT\r\nЗАПРОС НОМЕР СЛОВО ");
    QString text = begin;
    while (text.size() < size)
        text += words;
    text.truncate(size);
    ProcessSKK.clearSKKConnection();
    ProcessSKK.receiveBuffer.clear();
    ProcessSKK.setCallDirection(Incoming);
    ProcessSKK.processReceive(text);
    ProcessSKK.processReceive(QString(QLatin1Char('A'))); // the buffer has room for more from here on
}

void receive(benchmark::State &state, const QString &begin)
{
    const Desk desk;
    Options.TcpMode = true;
    const QString next = QStringLiteral("ЕЩЕ #1 СЛОВО ЗА СЛОВОМ\r\n").repeated(16).left(Batch);
    for (auto _ : state) {
        state.PauseTiming();
        open(begin, int(state.range(0)));
        state.ResumeTiming();
        for (const QChar c : next)
            ProcessSKK.processReceive(c);
    }
    state.SetItemsProcessed(state.iterations() * Batch);
}

void ReceiveText(benchmark::State &state)
{
    receive(state, QString());
}

void ReceiveTelegram(benchmark::State &state)
{
    receive(state, QStringLiteral("ЗЦЗЦ 001 "));
}

void ReceiveAnnounced(benchmark::State &state)
{
    receive(state, QStringLiteral(" КРПТ КРПТ КРПТ "));
}

/// A piece more while an answerback is awaited: then all of the buffer is scanned.
void await(benchmark::State &state, const QString &word)
{
    const Desk desk;
    open(word.repeated(Await / word.size()), Await);
    for (auto _ : state) {
        State.AutoModeState = AutoWaitLastAA;
        State.AutoModeWaitAA = LongCentreAA;
        ProcessSKK.processReceive(QString(QLatin1Char('A')));
    }
}

void AwaitInText(benchmark::State &state)
{
    await(state, QStringLiteral("ТЕКСТ "));
}

void AwaitInStartMarks(benchmark::State &state)
{
    await(state, QStringLiteral("ЗЦЗЦ "));
}

BENCHMARK(AwaitInText);
BENCHMARK(AwaitInStartMarks);
BENCHMARK(ReceiveText)->Arg(Short)->Arg(Long);
BENCHMARK(ReceiveTelegram)->Arg(Short)->Arg(Long);
BENCHMARK(ReceiveAnnounced)->Arg(Short)->Arg(Long);

const std::vector<Ratio::Row> rows = {
    {"dialled: a character of text, 100 KB of connection against 1 KB", "ReceiveText/102400",
     "ReceiveText/1024", 3.0},
    {"dialled: a character of a telegram, 100 KB against 1 KB", "ReceiveTelegram/102400",
     "ReceiveTelegram/1024", 3.0},
    {"dialled: a character of encrypted text, 100 KB against 1 KB", "ReceiveAnnounced/102400",
     "ReceiveAnnounced/1024", 3.0},
    {"dialled: a scan of 16 KB of start marks against 16 KB of text", "AwaitInStartMarks", "AwaitInText",
     3.0},
};
} // namespace

int main(int argc, char **argv)
{
    return Ratio::run(argc, argv, rows);
}
