// Outgoing calls and their watch, second by second.

#include "tests/procedures/skk_desk.h"

#include <QSignalSpy>
#include <QtTest>

class TestSkkCall : public QObject
{
    Q_OBJECT

private slots:
    void callNumber_data();
    void callNumber();
    void unknownSignallingSendsNothing();
    void smallLetterDoesNotSurviveTheDoor();
    void watchdogIsThatOfTheRowInForce();
    void manualCallStartsNoFile();

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

    void success_data();
    void success();
    void callDirection_data();
    void callDirection();

    void answerback();
    void ignoreAO();
    void immediateHangUp();
    void debugInfoToLog();
};

void TestSkkCall::callNumber_data()
{
    QTest::addColumn<int>("signalling");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<int>("state");
    QTest::addColumn<char>("letter");
    QTest::newRow("code") << 0 << "@C@N123456@" << 1 << 'N';
    QTest::newRow("pulses") << 1 << "@C@N123456@" << 1 << 'N';
    QTest::newRow("code by program") << 2 << "@E" << 2 << 'E';
}

void TestSkkCall::callNumber()
{
    QFETCH(int, signalling);
    QFETCH(QString, sent);
    QFETCH(int, state);
    QFETCH(char, letter);
    const SkkDesk desk;
    Options.tlgSig = signalling;
    ProcessSKK.secondsSinceCmdOut = 9;
    ProcessSKK.callNumber("123456");
    QCOMPARE(desk.sent(), sent);
    QCOMPARE(State.callState, state);
    QCOMPARE(char(ProcessSKK.lastCmdOut), letter);
    QCOMPARE(ProcessSKK.secondsSinceCmdOut, 0);
    QCOMPARE(State.dialledNumber, "123456");
    QCOMPARE(State.waitTimeAfterCallEstablished, 62);
    QCOMPARE(desk.noted(), QStringList("312:00:00 Набор номера 123456"));
    QVERIFY(!State.connectionActive);
    QCOMPARE(State.callDirection, 0);
}

void TestSkkCall::unknownSignallingSendsNothing()
{
    for (const int signalling : {-1, 3, 99}) {
        const SkkDesk desk;
        Options.tlgSig = signalling;
        ProcessSKK.secondsSinceCmdOut = 9;
        ProcessSKK.callNumber("123456");
        QCOMPARE(desk.sent(), "");
        QCOMPARE(State.callState, 0);
        QCOMPARE(int(ProcessSKK.lastCmdOut), 0);
        QCOMPARE(ProcessSKK.secondsSinceCmdOut, 9);
        QCOMPARE(State.dialledNumber, "123456");
        QCOMPARE(State.waitTimeAfterCallEstablished, 62);
        QCOMPARE(desk.noted(), QStringList("312:00:00 Набор номера 123456"));
    }
}

void TestSkkCall::smallLetterDoesNotSurviveTheDoor()
{
    const SkkDesk desk;
    Options.tlgSig = 0;
    ProcessSKK.callNumber("12+n<>");
    QCOMPARE(desk.sent(), "@C@N12+N\r\n@");
}

void TestSkkCall::watchdogIsThatOfTheRowInForce()
{
    const SkkDesk desk;
    ProcessSKK.timing = &Options.SKKTiming[1];
    ProcessSKK.callNumber("1");
    QCOMPARE(State.waitTimeAfterCallEstablished, 72);
}

void TestSkkCall::manualCallStartsNoFile()
{
    const SkkDesk desk;
    ProcessSKK.callNumber("123456");
    desk.receive("@E");
    QCOMPARE(State.callState, 5);
    desk.receive("\r\n #12.00");
    QCOMPARE(State.callState, 6);
    desk.tick();
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(State.AutoModeWaitTimer, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(desk.sent(), "@C@N123456@");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Набор номера 123456"));
}

void TestSkkCall::agesOfCommandsRise()
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

void TestSkkCall::ownAnswerbackGoesOutWhenItsPauseEnds()
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

void TestSkkCall::ownAnswerbackIsLostWhileClosing()
{
    const SkkDesk desk;
    State.sendAOCountdown = 1;
    State.stopCountdown = 1;
    desk.tick(2);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.sendAOCountdown, 0);
}

void TestSkkCall::answerbackPauseStandsStillDuringSetup()
{
    const SkkDesk desk;
    State.sendAOCountdown = 1;
    State.waitTimeAfterCallEstablished = 10;
    desk.tick(5);
    QCOMPARE(State.sendAOCountdown, 1);
    QCOMPARE(State.waitTimeAfterCallEstablished, 5);
    QCOMPARE(desk.sent(), "");
}

void TestSkkCall::watchdogEndsTheCall()
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

void TestSkkCall::watchdogGoesBeforeSuccess()
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

void TestSkkCall::watchdogSpendsTheTryOnly()
{
    const SkkDesk desk;
    desk.automatic(CProcessSKK::AutoCalling, 61);
    desk.tick(62);
    QCOMPARE(State.AutoModeState, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkCall::goAheadSendsTheNumberOnTheNextTick()
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

void TestSkkCall::stationTimeIsWaitedFor()
{
    const SkkDesk desk;
    State.callState = 5;
    State.waitTimeAfterCallEstablished = 60;
    ProcessSKK.secondsSinceCmdIn = 1000;
    desk.tick(59);
    QCOMPARE(State.callState, 5);
    QCOMPARE(State.callDirection, 0);
}

void TestSkkCall::silenceMeansSuccessWithoutStationTime()
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

void TestSkkCall::silenceMeansNothingInOtherStates_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 1, 2, 3})
        QTest::addRow("%d", state) << state;
}

void TestSkkCall::silenceMeansNothingInOtherStates()
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

void TestSkkCall::connectedBecomesSuccessOnTheNextTick()
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

void TestSkkCall::success_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<int>("timer");
    QTest::newRow("manual") << 0 << 0 << 33;
    QTest::newRow("call in setup") << 1 << 2 << 1;
    QTest::newRow("later already") << 5 << 5 << 33;
}

void TestSkkCall::success()
{
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(int, timer);
    const SkkDesk desk;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    State.callState = 5;
    State.callResult = 2;
    State.waitTimeAfterCallEstablished = 60;
    State.AutoModeState = before;
    State.AutoModeWaitTimer = 33;
    ProcessSKK.proccessCallSuccess();
    QVERIFY(State.connectionActive);
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(State.SKK_out, 1);
    QCOMPARE(State.tlgMode, 3);
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
    QCOMPARE(State.callResult, 1);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.AutoModeState, after);
    QCOMPARE(State.AutoModeWaitTimer, timer);
    QCOMPARE(told.count(), 1);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkCall::callDirection_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("out");
    QTest::newRow("incoming") << 0 << 1 << 2 << 0;
    QTest::newRow("outgoing") << 0 << 2 << 3 << 1;
    QTest::newRow("none") << 1 << 0 << 2 << 0;
    QTest::newRow("incoming again") << 1 << 1 << 5 << 0;
    QTest::newRow("outgoing again") << 2 << 2 << 5 << 0;
    QTest::newRow("outgoing turned to incoming") << 2 << 1 << 2 << 0;
}

void TestSkkCall::callDirection()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, mode);
    QFETCH(int, out);
    const SkkDesk desk;
    State.callDirection = from;
    State.tlgMode = 5;
    ProcessSKK.setCallDirection(to);
    QVERIFY(State.connectionActive);
    QCOMPARE(State.callDirection, to);
    QCOMPARE(State.tlgMode, mode);
    QCOMPARE(State.SKK_out, out);
    QCOMPARE(State.SKK_in, 0);
}

void TestSkkCall::answerback()
{
    const SkkDesk desk;
    ProcessSKK.sendAO();
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkCall::ignoreAO()
{
    const SkkDesk desk;
    ProcessSKK.setIgnoreAO(true);
    QVERIFY(State.ignoreAO);
    QCOMPARE(desk.sent(), "\r\n|АО ВЫКЛ");
    ProcessSKK.setIgnoreAO(false);
    QVERIFY(!State.ignoreAO);
    QCOMPARE(desk.sent(), "\r\n|АО ВКЛ");
}

void TestSkkCall::immediateHangUp()
{
    const SkkDesk desk;
    desk.connect(CProcessSKK::Outgoing);
    ProcessSKK.SendTlgText("ТЕКСТ");
    ProcessSKK.immediateHangUp();
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(State.callDirection, 2); // the adapter's answer ends the connection
    QVERIFY(State.connectionActive);
    QCOMPARE(State.hangUpPause, 0);
    QCOMPARE(int(ProcessSKK.lastCmdOut), 0);
    QCOMPARE(desk.noted(), QStringList());

    desk.receive("@H");
    QCOMPARE(State.callDirection, 0);
    QVERIFY(!State.connectionActive);
}

void TestSkkCall::debugInfoToLog()
{
    const SkkDesk desk;
    ProcessSKK.receiveBuffer = QStringLiteral("ТЕКСТ #*");
    State.AutoModeWaitTimer = 12;
    State.AutoModeState = 14;
    State.AutoModeWaitAA = 9;
    State.callNumberResult = 5;
    State.waitTimeAfterCallEstablished = 59;
    ProcessSKK.debugInfoToLog();
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 Receive=ТЕКСТ #*", "312:00:00 AutoModeWaitTimer=12",
                          "312:00:00 AutoModeState=14", "312:00:00 AutoModeWaitAA=9",
                          "312:00:00 callNumberResult=5", "312:00:00 waitTimeAfterCallEstablished=59"}));
}

QTEST_GUILESS_MAIN(TestSkkCall)
#include "test_skk_call.moc"
