#include "tests/e2e/far_end.h"
#include "tests/e2e/process_memory.h"
#include "tests/e2e/station.h"

#include <QtTest>

#include <cstdio>

// What the program costs while nothing happens: the link is up, the queue is empty.
class BenchIdle : public QObject
{
    Q_OBJECT

private slots:
    void aMinuteCostsLittle();
    void aDayLeavesNoGrowth();
};

namespace
{
constexpr double MostOfACore = 1.0;     // per cent
constexpr double MostMegabytes = 100.0; // resident
constexpr double MostGrowth = 1.02;     // of resident memory, from the first hour to the end of the day
constexpr int MeasuredSeconds = 60;

void row(const char *what, double measured, const char *unit, double bar)
{
    std::printf("bench: %s | %.2f %s | bar <= %.2f | %s\n", what, measured, unit, bar,
                measured <= bar ? "ok" : "MISSED");
    std::fflush(stdout);
}

double megabytes(const Station &station)
{
    return double(residentKilobytes(station.process.processId())) / 1024.0;
}

bool connected(FarEnd &farEnd)
{
    return QTest::qWaitFor([&] { return farEnd.has(QStringLiteral("keep-alive: answered")); }, 30000);
}
} // namespace

void BenchIdle::aMinuteCostsLittle()
{
    FarEnd farEnd;
    Station station;
    station.callTo(farEnd.port);
    station.realTime();
    station.start();
    QVERIFY(connected(farEnd));
    QTest::qWait(5000);
    const double before = processorSeconds(station.process.processId());
    QTest::qWait(MeasuredSeconds * 1000);
    const double used = processorSeconds(station.process.processId()) - before;
    const double ofACore = 100.0 * used / MeasuredSeconds;
    const double resident = megabytes(station);
    row("idle minute with the link up, of one core", ofACore, "%", MostOfACore);
    row("resident memory of the idle program", resident, "MB", MostMegabytes);
    QVERIFY(ofACore > 0 && ofACore <= MostOfACore);
    QVERIFY(resident > 0 && resident <= MostMegabytes);
    QVERIFY(station.end());
}

// 25 hours in four minutes, a midnight among them.
void BenchIdle::aDayLeavesNoGrowth()
{
    FarEnd farEnd({QStringLiteral("--keep-alive"), QStringLiteral("100")});
    Station station;
    station.callTo(farEnd.port);
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("3600"));
    station.fakeTime(QStringLiteral("@2026-07-31 00:00:00 x360"));
    station.start();
    QVERIFY(connected(farEnd));
    QTest::qWait(10000); // the first hour
    const double before = megabytes(station);
    QTest::qWait(240000); // the day
    const double growth = megabytes(station) / before;
    row("resident memory after a day, of that after an hour", growth, "", MostGrowth);
    QVERIFY(
        !station.journalOf(QStringLiteral("20260801")).filter(QStringLiteral("Протокол открыт")).isEmpty());
    QCOMPARE(farEnd.lines.filter(QStringLiteral("closed: ")), QStringList());
    QVERIFY(before > 0 && growth <= MostGrowth);
    QVERIFY(station.end());
}

QTEST_GUILESS_MAIN(BenchIdle)
#include "bench_idle.moc"
