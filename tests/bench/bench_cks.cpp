#include "app/options.h"
#include "app/state.h"
#include "procedures/process_cks.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

// The numbered exchange looks at its buffer with each piece that comes. A message still waiting for its end
// mark must not make the next character dear, however long it is.

namespace
{
constexpr int Short = 1024;
constexpr int Long = 100 * 1024;
constexpr int Batch = 256;          ///< characters of one measured run
constexpr int LineTelegram = 2000;  ///< characters of a usual telegram, both marks included
constexpr double LineSecond = 26.7; ///< characters that a line of 200 baud brings in a second, 7.5 bits each

QString words(int size)
{
    QString text;
    while (text.size() < size)
        text += QStringLiteral("|ТЕКСТ #12.30 &TEXT\r\nНОМЕР СЛОВО ");
    return text.left(size);
}

void ReceiveWaiting(benchmark::State &state)
{
    const Desk desk;
    const QString begin = QStringLiteral("ЗЦЗЦ 001 ") + words(int(state.range(0)));
    const QString next = words(Batch);
    for (auto _ : state) {
        state.PauseTiming();
        ProcessCKS.receiveBuffer.clear();
        ProcessCKS.processReceive(begin);
        ProcessCKS.checkReceive();
        ProcessCKS.processReceive(QString(QLatin1Char('A'))); // the buffer has room for more from here on
        state.ResumeTiming();
        for (const QChar c : next) {
            ProcessCKS.processReceive(c);
            ProcessCKS.checkReceive();
        }
    }
    state.SetItemsProcessed(state.iterations() * Batch);
}
BENCHMARK(ReceiveWaiting)->Arg(Short)->Arg(Long);

/// Whole telegrams, a character at a time, each stored on the disk.
void ReceiveTelegrams(benchmark::State &state)
{
    const Desk desk;
    for (auto _ : state) {
        const QString number = QStringLiteral("%1").arg((State.PK_in + 1) % 1000, 3, 10, QLatin1Char('0'));
        if (number == QLatin1String("000"))
            State.PK_in = 0;
        const QString telegram = QStringLiteral("ЗЦЗЦ ") +
                                 (State.PK_in == 0 ? QStringLiteral("001") : number) + QStringLiteral(" ") +
                                 words(LineTelegram - 17) + QStringLiteral(" НННН  \r");
        const int before = State.PK_in;
        for (const QChar c : telegram) {
            ProcessCKS.processReceive(c);
            ProcessCKS.checkReceive();
        }
        if (State.PK_in == before)
            state.SkipWithError("telegram not stored");
    }
    state.SetItemsProcessed(state.iterations() * LineTelegram);
}
BENCHMARK(ReceiveTelegrams);

/// A message that was begun again and again.
void TakeBegunAgain(benchmark::State &state)
{
    const Desk desk;
    const QString message =
        QStringLiteral("ЗЦЗЦ ").repeated(int(state.range(0)) / 5) + QStringLiteral("СВЯЗЬ ОТКРЫТА НННН  \r");
    for (auto _ : state) {
        state.PauseTiming();
        ProcessCKS.receiveBuffer.clear();
        ProcessCKS.processReceive(message);
        state.ResumeTiming();
        ProcessCKS.checkReceive();
    }
}
BENCHMARK(TakeBegunAgain)->Arg(Short)->Arg(Long);

const std::vector<Ratio::Row> rows = {
    {"centre: a character of a waiting message, 100 KB against 1 KB", "ReceiveWaiting/102400",
     "ReceiveWaiting/1024", 1.5},
    {"centre: a telegram of 2,000 characters, against a line of 200 baud", "ReceiveTelegrams", nullptr, 0.001,
     LineTelegram / LineSecond},
    {"centre: a message of 100 KB of start marks against 1 KB", "TakeBegunAgain/102400",
     "TakeBegunAgain/1024", 150.0},
};
} // namespace

int main(int argc, char **argv)
{
    return Ratio::run(argc, argv, rows);
}
