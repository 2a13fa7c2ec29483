// What a line adapter does when something is wrong with it or with its line, with given times.

#include "tests/linesim/adapter_desk.h"
#include "tools/linesim/console/noise.h"

#include <QtTest>

class TestLinesimAdapterFaults : public QObject
{
    Q_OBJECT

private slots:
    void silentAdapterSaysNothing();
    void brokenLineIsToldAgainAndAgain();
    void lostSignalIsToldInPlaceOfStatuses();
    void lostEchoesAreCounted();
    void withheldCreditIsGivenBackAtOnce();
    void garbageIsRepeatedByItsSeed();
};

void TestLinesimAdapterFaults::silentAdapterSaysNothing()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.silent = true; }));
    desk.adapter.opened(0);
    desk.pass(4500);
    QCOMPARE(desk.bytes(), QByteArray());
    QVERIFY(desk.adapter.nextUs(desk.now) > desk.now);
    desk.adapter.setSilent(false);
    desk.pass(1);
    QCOMPARE(desk.bytes(), QByteArray("3f"));
}

void TestLinesimAdapterFaults::brokenLineIsToldAgainAndAgain()
{
    AdapterDesk desk;
    desk.connect();
    desk.adapter.setBreak(true);
    desk.adapter.sendText(QStringLiteral("А"), desk.now); // lost
    desk.pass(350);
    QCOMPARE(desk.bytes(), QByteArray("4f4f4f4f"));
    desk.adapter.setBreak(false);
    desk.adapter.sendText(QStringLiteral("А"), desk.now);
    desk.pass(40);
    QCOMPARE(desk.bytes(), QByteArray("03"));
}

void TestLinesimAdapterFaults::lostSignalIsToldInPlaceOfStatuses()
{
    AdapterDesk desk;
    desk.connect();
    desk.adapter.setNoSignal(true);
    desk.pass(950);
    QCOMPARE(desk.bytes(), QByteArray("5e5e5e5e5e5e5e5e5e5e"));
    desk.adapter.setNoSignal(false);
    desk.pass(1);
    QCOMPARE(desk.bytes(), QByteArray("3f"));
}

void TestLinesimAdapterFaults::lostEchoesAreCounted()
{
    AdapterDesk desk;
    desk.connect();
    desk.adapter.loseEchoes(2);
    desk.program("00031901"); // АБЕ
    desk.pass(200);
    QCOMPARE(desk.heard, QStringLiteral("АБЕ"));
    QCOMPARE(desk.sent.count('\x80') + desk.sent.count('\x83'), 0);
    QCOMPARE(desk.sent.count('\x99'), 1);
    QCOMPARE(desk.sent.count('\x81'), 1);
}

void TestLinesimAdapterFaults::withheldCreditIsGivenBackAtOnce()
{
    AdapterDesk desk;
    desk.connect();
    desk.adapter.withholdCredit(700, desk.now);
    desk.pass(600);
    QCOMPARE(desk.bytes(), QByteArray("30"));
    desk.program("67");
    QVERIFY(desk.adapter.nextUs(desk.now) <= desk.now + 100 * Ms);
    desk.pass(99);
    QCOMPARE(desk.bytes(), QByteArray());
    desk.pass(1);
    QCOMPARE(desk.bytes(), QByteArray("3f"));
}

void TestLinesimAdapterFaults::garbageIsRepeatedByItsSeed()
{
    AdapterDesk one, two, other;
    for (AdapterDesk *desk : {&one, &two, &other})
        desk->connect();
    one.adapter.sendRaw(noiseOf(QStringLiteral("300 7")), one.now);
    two.adapter.sendRaw(noiseOf(QStringLiteral("300 7")), two.now);
    other.adapter.sendRaw(noiseOf(QStringLiteral("300 8")), other.now);
    QCOMPARE(one.sent.size(), 300);
    QCOMPARE(one.sent, two.sent);
    QVERIFY(one.sent != other.sent);
    // What looked like a status has granted something.
    one.program("67");
    one.program("030303030303030303030303030303");
    QVERIFY(one.breaches().isEmpty());
}

QTEST_GUILESS_MAIN(TestLinesimAdapterFaults)
#include "test_linesim_adapter_faults.moc"
