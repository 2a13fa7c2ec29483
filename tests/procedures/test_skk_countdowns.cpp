// The second-by-second work: the watchdog of a call and the pause before the own answerback.

#include "tests/procedures/skk_desk.h"

#include <QtTest>

class TestSkkCountdowns : public QObject
{
    Q_OBJECT

private slots:
    void agesOfCommandsRise();
    void ownAnswerbackGoesOutWhenItsPauseEnds();
    void ownAnswerbackIsLostWhileClosing();
    void answerbackPauseStandsStillDuringSetup();
    void watchdogEndsTheCall();
    void watchdogGoesBeforeSuccess();
    void watchdogSpendsTheTryOnly();
    void goAheadSendsTheNumberOnTheNextTick();
    void stationTimeIsWaitedFor();
    void silenceMeansSuccessWithoutStationTime();
    void silenceMeansNothingInOtherStates_data();
    void silenceMeansNothingInOtherStates();
    void connectedBecomesSuccessOnTheNextTick();
};

void TestSkkCountdowns::agesOfCommandsRise()
{
    const SkkDesk desk;
    ProcessSKK.secondsSinceCmdIn = 3;
    ProcessSKK.secondsSinceCmdOut = 5;
    desk.tick();
    State.waitTimeAfterCallEstablished = 9;
    desk.tick();
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 5);
    QCOMPARE(ProcessSKK.secondsSinceCmdOut, 7);
}

void TestSkkCountdowns::ownAnswerbackGoesOutWhenItsPauseEnds()
{
    const SkkDesk desk;
    State.sendAOCountdown = 3;
    desk.tick(2);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.sendAOCountdown, 1);
    desk.tick();
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
    desk.tick(5);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.sendAOCountdown, 0);
}

void TestSkkCountdowns::ownAnswerbackIsLostWhileClosing()
{
    const SkkDesk desk;
    State.sendAOCountdown = 1;
    State.stopCountdown = 1;
    desk.tick(2);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.sendAOCountdown, 0);
}

void TestSkkCountdowns::answerbackPauseStandsStillDuringSetup()
{
    const SkkDesk desk;
    State.sendAOCountdown = 1;
    State.waitTimeAfterCallEstablished = 10;
    desk.tick(5);
    QCOMPARE(State.sendAOCountdown, 1);
    QCOMPARE(State.waitTimeAfterCallEstablished, 5);
    QCOMPARE(desk.sent(), "");
}

void TestSkkCountdowns::watchdogEndsTheCall()
{
    const SkkDesk desk;
    ProcessSKK.callNumber("123456");
    desk.receive("@E");
    (void)desk.sent();
    desk.tick(61);
    QCOMPARE(State.waitTimeAfterCallEstablished, 1);
    QCOMPARE(State.callState, 5);
    QCOMPARE(State.callResult, 0);
    QVERIFY(State.connectionActive);
    QCOMPARE(desk.sent(), "");

    desk.tick();
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.callResult, 12);
    QCOMPARE(State.hangUpPause, 5);
    QVERIFY(!State.connectionActive);
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Набор номера 123456")); // no line of its own
    QVERIFY(desk.names("out").isEmpty());

    desk.tick(3);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
}

void TestSkkCountdowns::watchdogGoesBeforeSuccess()
{
    for (const int state : {4, 6}) {
        const SkkDesk desk;
        State.callState = state;
        State.waitTimeAfterCallEstablished = 1;
        desk.tick();
        QCOMPARE(State.callResult, 12);
        QCOMPARE(State.callDirection, 0);
        QCOMPARE(desk.sent(), "@H");
    }
}

void TestSkkCountdowns::watchdogSpendsTheTryOnly()
{
    const SkkDesk desk;
    desk.automatic(AutoCalling, 61);
    desk.tick(62);
    QCOMPARE(State.AutoModeState, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkCountdowns::goAheadSendsTheNumberOnTheNextTick()
{
    const SkkDesk desk;
    Options.stationTimeAfterConnect = false;
    ProcessSKK.secondsSinceCmdIn = 100;
    State.callState = 4;
    State.dialledNumber = QStringLiteral("123456");
    State.waitTimeAfterCallEstablished = 60;
    desk.tick();
    QCOMPARE(desk.sent(), "#123456");
    QCOMPARE(State.callState, 5); // the work of this second ends here, so it is no success yet
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.waitTimeAfterCallEstablished, 59);
}

void TestSkkCountdowns::stationTimeIsWaitedFor()
{
    const SkkDesk desk;
    State.callState = 5;
    State.waitTimeAfterCallEstablished = 60;
    ProcessSKK.secondsSinceCmdIn = 1000;
    desk.tick(59);
    QCOMPARE(State.callState, 5);
    QCOMPARE(State.callDirection, 0);
}

void TestSkkCountdowns::silenceMeansSuccessWithoutStationTime()
{
    const SkkDesk desk;
    Options.stationTimeAfterConnect = false;
    Options.waitErrorReactionAfterConnect = 4;
    ProcessSKK.callNumber("123456");
    desk.tick(20);
    desk.receive("@E");
    desk.tick(4);
    QCOMPARE(State.callState, 5);
    QCOMPARE(State.callDirection, 0);
    desk.tick();
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
}

void TestSkkCountdowns::silenceMeansNothingInOtherStates_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 1, 2, 3})
        QTest::addRow("%d", state) << state;
}

void TestSkkCountdowns::silenceMeansNothingInOtherStates()
{
    QFETCH(int, state);
    const SkkDesk desk;
    Options.stationTimeAfterConnect = false;
    State.callState = state;
    State.waitTimeAfterCallEstablished = 60;
    ProcessSKK.secondsSinceCmdIn = 1000;
    desk.tick(59);
    QCOMPARE(State.callState, state);
    QCOMPARE(State.callDirection, 0);
}

void TestSkkCountdowns::connectedBecomesSuccessOnTheNextTick()
{
    for (const bool stationTime : {true, false}) {
        const SkkDesk desk;
        Options.stationTimeAfterConnect = stationTime;
        State.callState = 6;
        State.waitTimeAfterCallEstablished = 60;
        desk.tick();
        QCOMPARE(State.callDirection, 2);
        QCOMPARE(State.callState, 0);
        QCOMPARE(State.callResult, 1);
    }
}

QTEST_GUILESS_MAIN(TestSkkCountdowns)
#include "test_skk_countdowns.moc"
