#include "app/clock.h"
#include "app/options.h"
#include "app/startup.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

#include <ctime>

/// The program's clock. Zones are given as rules, so that no zone data is needed: central European time,
/// with its day of 23 hours on 2026-03-29 and that of 25 on 2026-10-25.
class TestClock : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("TZ"); }
    void cleanup();

    void everyMemberFollowsTheMoment_data();
    void everyMemberFollowsTheMoment();
    void formatsOfTheProgram();
    void clockIsValidBeforeAnyStart();
    void updateTakesTheSystemClock_data();
    void updateTakesTheSystemClock();
    void offset0GivesLocalTime();
    void negativeOffsetAddsHours();
    void atAnOffsetOf3TheDayChangesAt3LocalTime();
    void dayOf23HoursIsShiftedByHoursThatPass();
    void dayOf25HoursIsShiftedByHoursThatPass();
    void repeatedHourKeepsTheDate();
    void absurdOffsetIsNoHarm();
    void startTakesTheOffsetAndTicksEachSecond();
    void tickRenewsTheClockBeforeItIsHeard();
    void timerTicks();
    void changedOffsetTakesEffectWithTheNextTick();
    void serviceLinesOfOneTickCarryTheSameSecond();
};

namespace
{
void setZone(const char *rule)
{
    qputenv("TZ", rule);
    tzset();
}

constexpr const char *CentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

/// The clock after this moment of world time, as "yyyyMMdd hhmmss".
QString shownAt(int year, int month, int day, int hour, int minute, int second)
{
    const QDateTime moment(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
    Time.setTo(CTime::onNetworkTime(moment.toLocalTime()));
    return Time.yyyyMMdd + ' ' + Time.hhmmss;
}
} // namespace

void TestClock::cleanup()
{
    qunsetenv("TZ");
    tzset();
}

void TestClock::everyMemberFollowsTheMoment_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QStringList>("shown");
    row("two digits", QDateTime(QDate(2026, 12, 31), QTime(23, 59, 58)),
        QStringList({"20261231", "12.31", "1231", "2359", "23:59:58", "235958"}));
    row("one digit", QDateTime(QDate(2027, 1, 2), QTime(3, 4, 5)),
        QStringList({"20270102", "01.02", "0102", "0304", "03:04:05", "030405"}));
    row("midnight", QDateTime(QDate(2028, 2, 29), QTime(0, 0, 0)),
        QStringList({"20280229", "02.29", "0229", "0000", "00:00:00", "000000"}));
}

void TestClock::everyMemberFollowsTheMoment()
{
    QFETCH(QDateTime, moment);
    const Desk desk;
    Time.setTo(moment);
    QCOMPARE(Time.dateTime, moment);
    QCOMPARE(Time.date, moment.date());
    QCOMPARE(Time.time, moment.time());
    QTEST(QStringList({Time.yyyyMMdd, Time.dotMMdd, Time.MMdd, Time.hhmm, Time.hh_mm_ss, Time.hhmmss}),
          "shown");
}

void TestClock::formatsOfTheProgram()
{
    const QDateTime moment(QDate(2026, 7, 1), QTime(8, 9));
    QCOMPARE(moment.toString(CTime::formatDD_MM_YYYY), QStringLiteral("01.07.2026"));
    QCOMPARE(moment.toString(CTime::formatDD_MM_YYYY_HH_MM), QStringLiteral("01.07.2026 08:09"));
}

void TestClock::clockIsValidBeforeAnyStart()
{
    const Desk desk;
    const QDateTime before = QDateTime::currentDateTime();
    const CTime clock;
    QVERIFY(clock.dateTime >= before && clock.dateTime <= QDateTime::currentDateTime());
    QCOMPARE(clock.yyyyMMdd.size(), 8);
    QVERIFY(!clock.timer.isActive());
}

void TestClock::updateTakesTheSystemClock_data()
{
    QTest::addColumn<int>("TZ");
    row("none", 0);
    row("east of the network", 7);
    row("west of the network", -3);
    row("more than a day", 30);
}

void TestClock::updateTakesTheSystemClock()
{
    QFETCH(int, TZ);
    const Desk desk;
    Options.TZ = TZ;
    const QDateTime before = QDateTime::currentDateTime();
    Time.update();
    const QDateTime after = QDateTime::currentDateTime();
    const qint64 shift = qint64(TZ) * 3600 * 1000;
    QVERIFY(Time.dateTime.toMSecsSinceEpoch() >= before.toMSecsSinceEpoch() - shift);
    QVERIFY(Time.dateTime.toMSecsSinceEpoch() <= after.toMSecsSinceEpoch() - shift);
    QCOMPARE(Time.yyyyMMdd, Time.dateTime.toString("yyyyMMdd"));
}

void TestClock::offset0GivesLocalTime()
{
    const Desk desk;
    setZone("TST-5");
    QCOMPARE(shownAt(2026, 7, 30, 19, 30, 0), QStringLiteral("20260731 003000"));
}

void TestClock::negativeOffsetAddsHours()
{
    const Desk desk;
    setZone("TST-5");
    Options.TZ = -2;
    QCOMPARE(shownAt(2026, 7, 30, 16, 59, 59), QStringLiteral("20260730 235959"));
    QCOMPARE(shownAt(2026, 7, 30, 17, 0, 0), QStringLiteral("20260731 000000"));
}

void TestClock::atAnOffsetOf3TheDayChangesAt3LocalTime()
{
    const Desk desk;
    setZone("TST-5");
    Options.TZ = 3;
    QCOMPARE(shownAt(2026, 7, 30, 21, 59, 59), QStringLiteral("20260730 235959")); // 02:59:59 local
    QCOMPARE(shownAt(2026, 7, 30, 22, 0, 0), QStringLiteral("20260731 000000"));   // 03:00:00 local
}

void TestClock::dayOf23HoursIsShiftedByHoursThatPass()
{
    const Desk desk;
    setZone(CentralEurope);
    // Without an offset the clock steps from 01:59:59 to 03:00:00.
    QCOMPARE(shownAt(2026, 3, 29, 0, 59, 59), QStringLiteral("20260329 015959"));
    QCOMPARE(shownAt(2026, 3, 29, 1, 0, 0), QStringLiteral("20260329 030000"));
    // Three hours after midnight the local clock stands at 04:00.
    Options.TZ = 3;
    QCOMPARE(shownAt(2026, 3, 29, 1, 59, 59), QStringLiteral("20260328 235959"));
    QCOMPARE(shownAt(2026, 3, 29, 2, 0, 0), QStringLiteral("20260329 000000"));
    QCOMPARE(shownAt(2026, 3, 29, 3, 59, 59), QStringLiteral("20260329 015959"));
    QCOMPARE(shownAt(2026, 3, 29, 4, 0, 0), QStringLiteral("20260329 030000"));
}

void TestClock::dayOf25HoursIsShiftedByHoursThatPass()
{
    const Desk desk;
    setZone(CentralEurope);
    Options.TZ = 3; // three hours after midnight the local clock has come to 02:00 again
    QCOMPARE(shownAt(2026, 10, 25, 0, 59, 59), QStringLiteral("20261024 235959"));
    QCOMPARE(shownAt(2026, 10, 25, 1, 0, 0), QStringLiteral("20261025 000000"));
    Options.TZ = -1;
    QCOMPARE(shownAt(2026, 10, 25, 0, 0, 0), QStringLiteral("20261025 020000")); // 02:00 the first time, + 1
    QCOMPARE(shownAt(2026, 10, 25, 1, 0, 0), QStringLiteral("20261025 030000"));
}

void TestClock::repeatedHourKeepsTheDate()
{
    const Desk desk;
    setZone(CentralEurope);
    QCOMPARE(shownAt(2026, 10, 25, 0, 30, 0), QStringLiteral("20261025 023000"));
    QCOMPARE(shownAt(2026, 10, 25, 1, 30, 0), QStringLiteral("20261025 023000"));
    QCOMPARE(shownAt(2026, 10, 25, 22, 59, 59), QStringLiteral("20261025 235959"));
    QCOMPARE(shownAt(2026, 10, 25, 23, 0, 0), QStringLiteral("20261026 000000"));
}

void TestClock::absurdOffsetIsNoHarm()
{
    const Desk desk;
    for (const int hours : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        Options.TZ = hours;
        Time.update();
        QVERIFY(Time.dateTime.isValid());
        QCOMPARE(Time.hhmmss.size(), 6);
    }
}

void TestClock::startTakesTheOffsetAndTicksEachSecond()
{
    const Desk desk;
    CTime clock; // made while the offset is the built-in 0
    Options.TZ = 100;
    const QDateTime before = QDateTime::currentDateTime();
    clock.start();
    QVERIFY(qAbs(clock.dateTime.secsTo(before) - 100 * 3600) <= 1);
    QVERIFY(clock.timer.isActive());
    QCOMPARE(clock.timer.interval(), 1000);
    QVERIFY(!clock.timer.isSingleShot());
}

void TestClock::tickRenewsTheClockBeforeItIsHeard()
{
    const Desk desk;
    Time.setTo(QDateTime(QDate(2000, 1, 1), QTime(0, 0)));
    QStringList heard;
    const auto connection = connect(&Time, &CTime::signal_1sec, this, [&] { heard << Time.yyyyMMdd; });
    Time.slotOn_1sec();
    disconnect(connection);
    QCOMPARE(heard.size(), 1);
    QVERIFY(heard.at(0) != QLatin1String("20000101"));
}

void TestClock::timerTicks()
{
    const Desk desk;
    CTime clock;
    QSignalSpy ticks(&clock, &CTime::signal_1sec);
    clock.timer.start(1);
    QVERIFY(ticks.wait());
}

void TestClock::changedOffsetTakesEffectWithTheNextTick()
{
    const Desk desk;
    Time.slotOn_1sec();
    const QDateTime before = Time.dateTime;
    Options.TZ = 24;
    QCOMPARE(Time.dateTime, before);
    Time.slotOn_1sec();
    QVERIFY(qAbs(Time.dateTime.secsTo(before) - 24 * 3600) <= 1);
}

void TestClock::serviceLinesOfOneTickCarryTheSameSecond()
{
    const Desk desk(QTime(12, 0, 7)); // some other second than the system's: no line asks the system
    Log.addCacheServiceString("первая", ProtocolInfo, true);
    Log.addCacheServiceString("вторая", ProtocolError, false);
    QCOMPARE(desk.journal(), QStringList({"312:00:07 первая", "412:00:07 вторая", ""}));
}

QTEST_MAIN(TestClock)
#include "test_clock.moc"
