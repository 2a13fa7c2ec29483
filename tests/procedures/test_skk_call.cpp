// Outgoing calls and their watch, second by second.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

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
    row("code", 0, "@C@N123456@", 1, 'N');
    row("pulses", 1, "@C@N123456@", 1, 'N');
    row("code by program", 2, "@E", 2, 'E');
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

void TestSkkCall::success_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<int>("timer");
    row("manual", 0, 0, 33);
    row("call in setup", 1, 2, 1);
    row("later already", 5, 5, 33);
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
    row("incoming", 0, 1, 2, 0);
    row("outgoing", 0, 2, 3, 1);
    row("none", 1, 0, 2, 0);
    row("incoming again", 1, 1, 5, 0);
    row("outgoing again", 2, 2, 5, 0);
    row("outgoing turned to incoming", 2, 1, 2, 0);
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
    desk.connect(Outgoing);
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
