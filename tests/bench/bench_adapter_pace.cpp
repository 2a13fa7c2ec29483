#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cstdio>

// How busy a line of 200 baud is kept by the finished program while a long telegram waits: the adapter's room
// is small, and the text comes to it piece by piece, as it reports room.
class BenchAdapterPace : public QObject
{
    Q_OBJECT

private slots:
    void theLineNeverStarves();
};

namespace
{
constexpr double LeastShare = 0.97; // of what the pace of the line allows
constexpr double CodeMs = 37.5;     // 7.5 units at 200 baud
constexpr int Characters = 5000;

/// Letters of one register and line ends, so that the line carries one code for each character, and one for
/// the register at the beginning.
QString letters()
{
    QString text = QStringLiteral("ЗЦЗЦ ДЛИННАЯ\r\n");
    while (text.size() < Characters - 60)
        text += QStringLiteral("СТРОКА БЕЗ ЕДИНОЙ ЦИФРЫ И БЕЗ ЗНАКОВ ПРЕПИНАНИЯ\r\n");
    text += QString(Characters - 6 - text.size(), QChar(0x0410));
    return text + QStringLiteral("НННН  ");
}

/// A workstation on an adapter, and when the line carried its first and its last character.
struct Pair {
    explicit Pair(const QString &firmware) : farEnd({}, FarEnd::Adapter{firmware, QString(), {}})
    {
        station.useAdapter(farEnd.ports);
        station.realTime();
        station.write(QStringLiteral("out/20200101u001.200101_000000"), letters().toUtf8());
        station.start();
    }
    /// True once the last character has come.
    bool look(const QElapsedTimer &clock)
    {
        if (firstMs < 0 && !farEnd.lines.filter(QStringLiteral("text: ")).isEmpty())
            firstMs = clock.elapsed();
        if (lastMs < 0 && !farEnd.telegrams().isEmpty())
            lastMs = clock.elapsed();
        return lastMs >= 0;
    }
    /// Of the time in which the line could have carried them: the first text was noted when it had come.
    [[nodiscard]] double share() const { return Characters * CodeMs / double(lastMs - firstMs); }

    FarEnd farEnd;
    Station station;
    qint64 firstMs = -1;
    qint64 lastMs = -1;
};

bool row(const char *firmware, double share)
{
    std::printf(
        "bench: line of 200 baud kept busy over %d characters, %s firmware | %.3f | bar >= %.2f | %s\n",
        Characters, firmware, share, LeastShare, share >= LeastShare ? "ok" : "MISSED");
    std::fflush(stdout);
    return share >= LeastShare;
}
} // namespace

// Side by side, as each takes three minutes.
void BenchAdapterPace::theLineNeverStarves()
{
    QCOMPARE(letters().size(), Characters);
    Pair older(QStringLiteral("old"));
    Pair newer(QStringLiteral("new"));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(QTest::qWaitFor(
        [&] {
            const bool olderDone = older.look(clock);
            return newer.look(clock) && olderDone;
        },
        400000));
    const bool olderKept = row("older", older.share());
    const bool newerKept = row("newer", newer.share());
    QVERIFY(olderKept && newerKept);
    QVERIFY(older.share() <= 1.01 && newer.share() <= 1.01); // faster than the line can be
    for (Pair *pair : {&older, &newer}) {
        QCOMPARE(pair->farEnd.telegrams(), QStringList(letters()));
        QVERIFY(pair->station.end());
        QCOMPARE(pair->farEnd.violations(), QStringList());
    }
}

QTEST_GUILESS_MAIN(BenchAdapterPace)
#include "bench_adapter_pace.moc"
