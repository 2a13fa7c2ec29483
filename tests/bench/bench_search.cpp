#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/telegram_search.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"

#include <QProcess>
#include <QRandomGenerator>

#include <functional>

#include <sys/resource.h>

// The search of a word over 240 days of 100 telegrams of 2,000 characters, beside grep on the same tree, both
// with all files in memory. What counts is the processor's time, as both do nothing but compute.

namespace
{
constexpr int DayCount = 240, TelegramsADay = 100;
constexpr int TelegramLength = 2000, LineLength = 69;
constexpr int OneInSo = 100; // telegrams holds the long word; the short one comes by chance
const QString LongWord = QStringLiteral("ЗЕМЛЕТРЯСЕНИЕ");
const QDate LastDay(2026, 7, 31);

enum Word { Long, Short };

QString word(benchmark::State &state)
{
    return state.range(0) == Long ? LongWord : QStringLiteral("НЕТ");
}

/// Words of two to nine letters, in lines as they come.
QString telegram(QRandomGenerator &random)
{
    QString text;
    int lineLength = 0;
    while (text.size() < TelegramLength) {
        const int letters = 2 + random.bounded(8);
        for (int i = 0; i < letters; ++i)
            text += QChar(0x0410 + random.bounded(32));
        lineLength += letters + 1;
        text += lineLength > LineLength ? QStringLiteral("\r\n") : QStringLiteral(" ");
        lineLength = lineLength > LineLength ? 0 : lineLength;
    }
    text.truncate(TelegramLength);
    if (random.bounded(OneInSo) == 0)
        text.replace(random.bounded(TelegramLength - LongWord.size()), LongWord.size(), LongWord);
    return text;
}

void makeTree(const Desk &desk)
{
    QRandomGenerator random(1);
    for (int day = 0; day < DayCount; ++day) {
        const QString date = LastDay.addDays(-day).toString(QStringLiteral("yyyyMMdd"));
        for (int number = 0; number < TelegramsADay; ++number)
            desk.write(QStringLiteral("%1/%2/%2u%3")
                           .arg(number % 2 == 0 ? QStringLiteral("inp") : QStringLiteral("out"), date)
                           .arg(number, 3, 10, QChar('0')),
                       telegram(random).toUtf8());
    }
}

int countBySearch(const QString &word)
{
    constexpr int MillisecondsAtATime = 50;
    CTelegramSearch search({LastDay.addDays(1 - DayCount), LastDay, true, true, word});
    CTableViewModel_SearchResult found;
    while (search.next(MillisecondsAtATime, found)) {
    }
    return found.rowCount();
}

int countByGrep(const QString &word)
{
    QProcess grep;
    grep.start(QStringLiteral("grep"), {QStringLiteral("-rlF"), word, State.pathInp(), State.pathOut()});
    grep.waitForFinished(-1);
    return grep.readAllStandardOutput().count('\n');
}

/// Seconds of the processor that this process, or its children that have ended, have taken.
double processorSeconds(int whose)
{
    rusage used = {};
    getrusage(whose, &used);
    const auto seconds = [](const timeval &time) {
        return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

void measure(benchmark::State &state, int whose, const std::function<int()> &count, int expected)
{
    for (auto _ : state) {
        const double before = processorSeconds(whose);
        if (expected == 0 || count() != expected)
            state.SkipWithError("grep and the search find different files");
        state.SetIterationTime(processorSeconds(whose) - before);
    }
}

void search(benchmark::State &state)
{
    const QString searched = word(state);
    measure(
        state, RUSAGE_SELF, [&] { return countBySearch(searched); }, countByGrep(searched));
}
BENCHMARK(search)->Arg(Long)->Arg(Short)->Unit(benchmark::kMillisecond)->UseManualTime();

void grep(benchmark::State &state)
{
    const QString searched = word(state);
    measure(
        state, RUSAGE_CHILDREN, [&] { return countByGrep(searched); }, countBySearch(searched));
}
BENCHMARK(grep)->Arg(Long)->Arg(Short)->Unit(benchmark::kMillisecond)->UseManualTime();
} // namespace

int main(int argc, char **argv)
{
    const Desk desk;
    makeTree(desk);
    constexpr double HalfAsMuchAgain = 1.5;
    return Ratio::run(
        argc, argv,
        {{"search of 24,000 telegrams, against grep -rlF", "search/0", "grep/0", HalfAsMuchAgain},
         {"search of 24,000 telegrams for a short word", "search/1", "grep/1", HalfAsMuchAgain}});
}
