// The pace of a line, the account of what an adapter grants, and what it expects of the program, with given
// times.

#include "tests/support/row.h"
#include "tools/linesim/adapter/code_wire.h"
#include "tools/linesim/adapter/credit_ledger.h"
#include "tools/linesim/adapter/program_rules.h"
#include "tools/linesim/console/event_log.h"

#include <QtTest>

class TestLinesimAdapterWire : public QObject
{
    Q_OBJECT

private slots:
    void characterTakesSevenAndAHalfUnits_data();
    void characterTakesSevenAndAHalfUnits();
    void codeArrivesWhenItIsOver();
    void lateLookLosesNoTime();
    void lateCodeBeginsWhenItIsPut();
    void commandsTakeNoTimeAndKeepTheirPlace();
    void burstIsToldOnce();
    void pauseWithinABurstIsMeasured();
    void clearedWireIsEmpty();

    void grantFollowsTheRoom_data();
    void grantFollowsTheRoom();
    void onlyWhatWasAnsweredMayBeUsed();
    void latestOfSeveralStatusesMayBeUnread();
    void unansweredStatusAges();
    void statusTakesBackTheOneBefore();

    void modeIsTold_data();
    void modeIsTold();
    void unexpectedModeIsABreach();
    void secondModeByteMeansTalking();
    void versionIsAskedOnce();
    void versionBehindALossIsABreach();
    void versionBehindAGoodbyeIsDue();
    void versionThatWasNotAskedIsDueNoMore();
    void versionBehindASilentStartIsDue();
    void closeWithoutGoodbyeIsABreach();
    void goodbyeWithoutACloseIsABreach();
    void goodbyeExcusesNoAnswer();
    void closeByASilentAdapterIsNone_data();
    void closeByASilentAdapterIsNone();
    void killIsNoBreachIfAllowed();
    void lateAnswerIsBlamedOnce();
    void settlingProgramMayBeSilent();
};

namespace
{
constexpr qint64 Second = 1'000'000;

WireItem code(int value)
{
    return {value, QString()};
}

QVector<int> codes(const QVector<WireItem> &items)
{
    QVector<int> values;
    for (const WireItem &item : items)
        values << item.code;
    return values;
}

struct Rules {
    QStringList lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    ProgramRules rules{0x67, 1000, log};

    /// A connection whose program has come to answer statuses.
    void connect(qint64 nowUs = 0)
    {
        rules.opened(nowUs);
        rules.spoke(nowUs);
        rules.tookMode(0x67);
        rules.tookMode(0x67);
    }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }
};
} // namespace

void TestLinesimAdapterWire::characterTakesSevenAndAHalfUnits_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("us");
    row("50", 50, 150000);
    row("100", 100, 75000);
    row("200", 200, 37500);
}

void TestLinesimAdapterWire::characterTakesSevenAndAHalfUnits()
{
    QFETCH(int, baud);
    QFETCH(int, us);
    QCOMPARE(CodeWire::characterUs(baud), qint64(us));
    CodeWire wire(baud);
    wire.put(code(1), 1000);
    QCOMPARE(wire.nextUs(), qint64(us) + 1000);
}

void TestLinesimAdapterWire::codeArrivesWhenItIsOver()
{
    CodeWire wire(200);
    wire.put(code(7), 0);
    QVERIFY(wire.take(37499).isEmpty());
    QCOMPARE(wire.codesWaiting(), 1);
    QCOMPARE(codes(wire.take(37500)), QVector<int>({7}));
    QCOMPARE(wire.codesWaiting(), 0);
    QCOMPARE(wire.nextUs(), qint64(-1));
}

void TestLinesimAdapterWire::lateLookLosesNoTime()
{
    CodeWire wire(200);
    for (int i = 0; i < 20; ++i)
        wire.put(code(i), 0);
    int arrived = 0;
    for (qint64 now = 0; now <= 750'000; now += 41'000) // seldom, and never in step
        arrived += wire.take(now).size();
    QCOMPARE(arrived, 738'000 / 37'500);
    QCOMPARE(wire.take(750'000).size(), 20 - 738'000 / 37'500);
}

void TestLinesimAdapterWire::lateCodeBeginsWhenItIsPut()
{
    CodeWire wire(200);
    wire.put(code(1), 0);
    wire.put(code(2), 40'000); // the first is over at 37500, nobody has looked
    QCOMPARE(codes(wire.take(77'000)), QVector<int>({1}));
    QCOMPARE(wire.nextUs(), qint64(77'500));
}

void TestLinesimAdapterWire::commandsTakeNoTimeAndKeepTheirPlace()
{
    CodeWire wire(200);
    wire.put({-1, QStringLiteral("@C")}, 0);
    wire.put(code(1), 0);
    wire.put({-1, QStringLiteral("@H")}, 0);
    QCOMPARE(wire.codesWaiting(), 1);
    QCOMPARE(wire.take(0).value(0).command, QStringLiteral("@C"));
    QVERIFY(wire.take(37'000).isEmpty());
    const QVector<WireItem> rest = wire.take(37'500);
    QCOMPARE(codes(rest), QVector<int>({1, -1}));
    QCOMPARE(rest.value(1).command, QStringLiteral("@H"));
}

void TestLinesimAdapterWire::burstIsToldOnce()
{
    CodeWire wire(200);
    wire.put(code(1), 1000);
    wire.put(code(2), 1000);
    QCOMPARE(wire.take(Second).size(), 2);
    QVERIFY(!wire.endedBurst(76'000 + 499'999));
    const auto burst = wire.endedBurst(76'000 + 500'000);
    QVERIFY(burst);
    QCOMPARE(burst->codes, 2);
    QCOMPARE(burst->beginUs, qint64(1000));
    QCOMPARE(burst->endUs, qint64(76'000));
    QVERIFY(!wire.endedBurst(2 * Second));
}

void TestLinesimAdapterWire::pauseWithinABurstIsMeasured()
{
    CodeWire wire(200);
    wire.put(code(1), 0);
    wire.put(code(2), 137'500); // a pause of 100 ms
    wire.put(code(3), 10 * Second);
    QCOMPARE(wire.take(11 * Second).size(), 3);
    QCOMPARE(wire.longestPauseUs, qint64(100'000));
    const auto burst = wire.endedBurst(11 * Second);
    QCOMPARE(burst->codes, 2);
    QCOMPARE(burst->endUs, qint64(175'000));
    QCOMPARE(wire.endedBurst(11 * Second)->codes, 1);
    QCOMPARE(wire.codesInAll, qint64(3));
}

void TestLinesimAdapterWire::clearedWireIsEmpty()
{
    CodeWire wire(50);
    wire.put(code(1), 0);
    wire.clear();
    QVERIFY(wire.isEmpty());
    QVERIFY(wire.take(Second).isEmpty());
}

void TestLinesimAdapterWire::grantFollowsTheRoom_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<int>("waiting");
    QTest::addColumn<int>("outstanding");
    QTest::addColumn<int>("granted");
    row("all free", 64, 0, 0, 15);
    row("all free, the grant before not used", 64, 0, 15, 15);
    row("half of what is free, as a character may cost two codes", 64, 44, 0, 10);
    row("odd", 64, 61, 0, 1);
    row("what is outstanding comes first", 64, 30, 10, 7);
    row("full", 64, 64, 0, 0);
    row("overrun", 64, 70, 0, 0);
    row("more is outstanding than fits", 64, 40, 15, 0);
    row("small room", 16, 0, 4, 4);
    row("smallest room", 4, 0, 1, 1);
}

void TestLinesimAdapterWire::grantFollowsTheRoom()
{
    QFETCH(int, room);
    QFETCH(int, waiting);
    QFETCH(int, outstanding);
    QTEST(CreditLedger::grantFor(room, waiting, outstanding), "granted");
}

void TestLinesimAdapterWire::onlyWhatWasAnsweredMayBeUsed()
{
    CreditLedger credit;
    credit.granted(2, 0);
    QVERIFY(!credit.take()); // the program cannot have used what it has not read
    credit.answered(10'000);
    QVERIFY(credit.take());
    QCOMPARE(credit.outstanding(), 1);
    QVERIFY(credit.take());
    QVERIFY(!credit.take());
    QVERIFY(credit.isUsed());
}

void TestLinesimAdapterWire::latestOfSeveralStatusesMayBeUnread()
{
    CreditLedger credit;
    credit.granted(3, 0);
    credit.granted(5, Second);
    credit.answered(Second + 1000); // to the first, or to both
    for (int i = 0; i < 5; ++i)
        QVERIFY(credit.take());
    QVERIFY(!credit.take());
    credit.answered(Second + 2000);
    for (int i = 0; i < 5; ++i)
        QVERIFY(credit.take());
    QVERIFY(!credit.take());
    credit.answered(Second + 3000);
    QVERIFY(!credit.take());
}

void TestLinesimAdapterWire::unansweredStatusAges()
{
    CreditLedger credit;
    QCOMPARE(credit.unansweredUs(Second), qint64(0));
    credit.granted(3, Second);
    QVERIFY(!credit.isAnswered());
    QCOMPARE(credit.unansweredUs(3 * Second), 2 * Second);
    credit.answered(3 * Second);
    QVERIFY(credit.isAnswered());
    QCOMPARE(credit.unansweredUs(4 * Second), qint64(0));
}

void TestLinesimAdapterWire::statusTakesBackTheOneBefore()
{
    CreditLedger credit;
    credit.granted(15, 0);
    credit.answered(10);
    credit.granted(0, Second);
    QVERIFY(credit.take()); // sent before the second status was read
    credit.answered(Second + 10);
    QVERIFY(!credit.take());
}

void TestLinesimAdapterWire::modeIsTold_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("baud");
    row("64 no speed", 0x64, 0);
    row("65 50 baud", 0x65, 50);
    row("66 100 baud", 0x66, 100);
    row("67 200 baud", 0x67, 200);
    row("69 switched", 0x69, 0);
}

void TestLinesimAdapterWire::modeIsTold()
{
    QFETCH(int, mode);
    QFETCH(int, baud);
    QVERIFY(ProgramRules::isMode(quint8(mode)));
    if (baud > 0)
        QCOMPARE(int(ProgramRules::modeOf(baud)), mode);
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    ProgramRules rules(ProgramRules::AnyMode, 1000, log);
    rules.opened(0);
    rules.tookMode(quint8(mode));
    rules.tookMode(quint8(mode));
    QCOMPARE(lines, QStringList(QStringLiteral("mode: ") + QTest::currentDataTag()));
}

void TestLinesimAdapterWire::unexpectedModeIsABreach()
{
    QVERIFY(!ProgramRules::isMode(0x63));
    QVERIFY(!ProgramRules::isMode(0x68));
    Rules r;
    r.rules.opened(0);
    r.rules.tookMode(0x65);
    QCOMPARE(r.breaches(), QStringList("violation: mode 65 50 baud instead of 67 200 baud"));
}

void TestLinesimAdapterWire::secondModeByteMeansTalking()
{
    Rules r;
    QCOMPARE(r.rules.phase(), ProgramRules::Closed);
    r.rules.opened(0);
    QCOMPARE(r.rules.phase(), ProgramRules::Opened);
    r.rules.tookMode(0x67);
    QCOMPARE(r.rules.phase(), ProgramRules::Settling);
    r.rules.tookMode(0x67);
    QCOMPARE(r.rules.phase(), ProgramRules::Talking);
}

void TestLinesimAdapterWire::versionIsAskedOnce()
{
    Rules r;
    r.rules.opened(0);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QVERIFY(r.breaches().isEmpty());
    r.rules.tookVersionRequest();
    QCOMPARE(r.breaches(), QStringList("violation: version asked when it was not due"));
}

void TestLinesimAdapterWire::versionBehindALossIsABreach()
{
    Rules r;
    r.rules.opened(0);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    r.rules.tookMode(0x67);
    r.rules.lost();
    r.rules.opened(Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QCOMPARE(r.breaches(), QStringList("violation: version asked when it was not due"));
    r.rules.lost();
    r.rules.allowVersion();
    r.rules.opened(2 * Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QCOMPARE(r.breaches().size(), 1);
}

void TestLinesimAdapterWire::versionBehindAGoodbyeIsDue()
{
    Rules r;
    r.connect();
    r.rules.tookGoodbye();
    r.rules.closed(Second);
    r.rules.opened(2 * Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QVERIFY(r.breaches().isEmpty());
}

void TestLinesimAdapterWire::versionThatWasNotAskedIsDueNoMore()
{
    Rules r;
    r.connect();
    r.rules.lost();
    r.rules.opened(Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QCOMPARE(r.breaches().size(), 1);
}

void TestLinesimAdapterWire::versionBehindASilentStartIsDue()
{
    Rules r;
    r.rules.opened(0);
    r.rules.closed(5 * Second);
    r.rules.opened(35 * Second);
    r.rules.spoke(35 * Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest();
    QVERIFY(r.breaches().isEmpty());
}

void TestLinesimAdapterWire::closeWithoutGoodbyeIsABreach()
{
    Rules r;
    r.connect();
    r.rules.closed(Second);
    QCOMPARE(r.breaches(), QStringList("violation: closed without a goodbye"));
}

void TestLinesimAdapterWire::goodbyeWithoutACloseIsABreach()
{
    Rules r;
    r.connect();
    r.rules.tookByte();
    r.rules.tookGoodbye();
    QVERIFY(r.breaches().isEmpty());
    r.rules.tookByte();
    r.rules.tookByte();
    QCOMPARE(r.breaches(), QStringList("violation: goodbye without a close")); // once
    r.rules.closed(Second);
    r.connect(2 * Second);
    r.rules.tookByte();
    QCOMPARE(r.breaches().size(), 1);
}

void TestLinesimAdapterWire::goodbyeExcusesNoAnswer()
{
    Rules r;
    r.connect();
    r.rules.tookGoodbye();
    r.rules.checkAnswer(Second, Second);
    QVERIFY(r.breaches().isEmpty());
    r.rules.checkAnswer(Second + 1, Second + 1);
    QCOMPARE(r.breaches(), QStringList("violation: status not answered in 1000 ms"));
}

void TestLinesimAdapterWire::closeByASilentAdapterIsNone_data()
{
    QTest::addColumn<bool>("spoke");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("breaches");
    row("never said a word", false, 5, 0);
    row("had no time to", false, 3, 1);
    row("fell silent", true, 31, 0);
    row("fell silent a moment ago", true, 20, 1);
}

void TestLinesimAdapterWire::closeByASilentAdapterIsNone()
{
    QFETCH(bool, spoke);
    QFETCH(int, seconds);
    Rules r;
    r.rules.opened(0);
    if (spoke)
        r.rules.spoke(0);
    r.rules.closed(seconds * Second);
    QTEST(int(r.breaches().size()), "breaches");
}

void TestLinesimAdapterWire::killIsNoBreachIfAllowed()
{
    Rules r;
    r.connect();
    r.rules.allowKill();
    r.rules.closed(Second);
    r.rules.opened(2 * Second);
    r.rules.tookMode(0x67);
    r.rules.tookVersionRequest(); // another program
    QVERIFY(r.breaches().isEmpty());
}

void TestLinesimAdapterWire::lateAnswerIsBlamedOnce()
{
    Rules r;
    r.connect();
    r.rules.checkAnswer(Second, Second);
    QVERIFY(r.breaches().isEmpty());
    r.rules.checkAnswer(Second + 1, Second + 1);
    r.rules.checkAnswer(2 * Second, 2 * Second);
    QCOMPARE(r.breaches(), QStringList("violation: status not answered in 1000 ms"));
    r.rules.tookMode(0x67);
    r.rules.checkAnswer(Second + 1, 4 * Second);
    QCOMPARE(r.breaches().size(), 2);
}

void TestLinesimAdapterWire::settlingProgramMayBeSilent()
{
    Rules r;
    r.rules.opened(0);
    r.rules.tookMode(0x67);
    r.rules.checkAnswer(7 * Second, 7 * Second);
    QVERIFY(r.breaches().isEmpty());
    r.rules.checkAnswer(Second, 13 * Second);
    QCOMPARE(r.breaches(), QStringList("violation: status not answered in 12000 ms"));
}

QTEST_GUILESS_MAIN(TestLinesimAdapterWire)
#include "test_linesim_adapter_wire.moc"
