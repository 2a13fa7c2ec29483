// The reading of the line: questions, hang-ups, encrypted text, noise, in the order of their tests.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkScan : public QObject
{
    Q_OBJECT

private slots:
    void commandIsScannedLikeText();
    void questionInEachAutoState_data();
    void questionInEachAutoState();
    void questionIsAnsweredInEachDirection_data();
    void questionIsAnsweredInEachDirection();
    void questionCutInTwo();
    void questionWithAPauseInTheRowOfSubscribers();
    void eachQuestionIsAnswered();
    void questionInStateFifteenAnswersAtOnce();
    void ignoredQuestionStaysAndIsPassedOver();

    void farEndHangsUp_data();
    void farEndHangsUp();
    void farEndHangsUpDuringACall();
    void farEndHangsUpInAutomaticMode();
    void hangUpCutInTwo();

    void noiseIsCutAboveTwoHundredFiftySix();
    void connectionIsNotCut_data();
    void connectionIsNotCut();
    void endOfTheConnectionCutsTheNoise();
    void orderOfForms_data();
    void orderOfForms();
};

namespace
{
const QString OwnAO = QStringLiteral("#\r\n777777 ДЕСК");
} // namespace

void TestSkkScan::commandIsScannedLikeText()
{
    const SkkDesk desk;
    desk.receive("АБ@");
    ProcessSKK.processReceiveCmd("H");
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'H');
    QCOMPARE(ProcessSKK.receiveBuffer, "");
}

void TestSkkScan::questionInEachAutoState_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state <= 17; ++state)
        QTest::addRow("%d", state) << state;
}

void TestSkkScan::questionInEachAutoState()
{
    QFETCH(int, state);
    const bool cutShort = state == 6 || state == 15;
    const SkkDesk desk;
    desk.connect(Outgoing);
    State.AutoModeState = state;
    State.AutoModeWaitTimer = 9;
    desk.receive("А#*Б");
    QCOMPARE(State.AutoModeState, state);
    QCOMPARE(State.AutoModeWaitTimer, cutShort ? 1 : 9);
    QCOMPARE(State.sendAOCountdown, 0);
    QCOMPARE(desk.sent(), cutShort ? "" : OwnAO);
    QCOMPARE(ProcessSKK.receiveBuffer, "Б");

    Options.SKKTiming[0].Pause_Before_Send_AA = 4;
    desk.receive("#*");
    QCOMPARE(State.sendAOCountdown, cutShort ? 0 : 4);
    QCOMPARE(desk.sent(), "");
}

void TestSkkScan::questionIsAnsweredInEachDirection_data()
{
    QTest::addColumn<int>("direction");
    row("none", 0);
    row("incoming", 1);
    row("outgoing", 2);
}

void TestSkkScan::questionIsAnsweredInEachDirection()
{
    QFETCH(int, direction);
    const SkkDesk desk;
    State.callDirection = direction;
    desk.receive("ШУМ#*ДАЛЬШЕ");
    QCOMPARE(desk.sent(), OwnAO);
    QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkScan::questionCutInTwo()
{
    for (const int direction : {0, 1, 2}) {
        const SkkDesk desk;
        State.callDirection = direction;
        desk.receive("ШУМ#");
        QCOMPARE(desk.sent(), "");
        desk.receive("*");
        QCOMPARE(desk.sent(), OwnAO);
        QCOMPARE(ProcessSKK.receiveBuffer, "");
    }
}

void TestSkkScan::questionWithAPauseInTheRowOfSubscribers()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    ProcessSKK.timing = &Options.SKKTiming[1];
    Options.SKKTiming[0].Pause_Before_Send_AA = 2;
    desk.receive("#*");
    desk.tick();
    QCOMPARE(desk.sent(), "");
    desk.tick();
    QCOMPARE(desk.sent(), OwnAO);
}

void TestSkkScan::eachQuestionIsAnswered()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    desk.receive("#*#*А#*");
    QCOMPARE(desk.sent(), OwnAO + OwnAO + OwnAO);
    // With a pause the last one begins it anew.
    Options.SKKTiming[0].Pause_Before_Send_AA = 3;
    desk.receive("#*");
    desk.tick(2);
    desk.receive("#*");
    desk.tick(2);
    QCOMPARE(desk.sent(), "");
    desk.tick();
    QCOMPARE(desk.sent(), OwnAO);
}

void TestSkkScan::questionInStateFifteenAnswersAtOnce()
{
    const SkkDesk desk;
    desk.automatic(AutoDelivered, 5);
    State.secondsSinceRx = 100;
    desk.receive("#*");
    QCOMPARE(State.AutoModeWaitTimer, 1);
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    QCOMPARE(desk.sent(), OwnAO);
    QCOMPARE(State.AutoModeState, 16);
}

void TestSkkScan::ignoredQuestionStaysAndIsPassedOver()
{
    for (const int direction : {0, 1, 2}) {
        const SkkDesk desk;
        State.callDirection = direction;
        State.ignoreAO = true;
        desk.receive("А#");
        desk.receive("*Б");
        QCOMPARE(ProcessSKK.receiveBuffer, "А#*Б");
        QCOMPARE(desk.sent(), "");
        State.ignoreAO = false;
        desk.receive("В");
        QCOMPARE(ProcessSKK.receiveBuffer, "БВ");
        QCOMPARE(desk.sent(), OwnAO);
    }
}

void TestSkkScan::farEndHangsUp_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("active");
    row("nothing to end", 0, false);
    row("call in setup", 0, true);
    row("incoming", 1, true);
    row("outgoing", 2, true);
}

void TestSkkScan::farEndHangsUp()
{
    QFETCH(int, direction);
    QFETCH(bool, active);
    const SkkDesk desk;
    State.callDirection = direction;
    State.connectionActive = active;
    State.connectionText = QStringLiteral("ТЕКСТ");
    ProcessSKK.SendTlgText("НЕ УШЛО");
    ProcessSKK.secondsSinceCmdIn = 9;
    desk.receive("А@HБ");
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'H');
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 0);
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(ProcessSKK.receiveBuffer, "Б");
    QCOMPARE(State.callDirection, 0);
    QVERIFY(!State.connectionActive);
    QStringList expected;
    if (active)
        expected << "312:00:00 Входящий отбой";
    if (direction != 0)
        expected << QStringLiteral("312:00:00 Соединение сохранено %1/20260731/s120000")
                        .arg(direction == 1 ? "inp" : "out");
    QCOMPARE(desk.noted(), expected);
}

void TestSkkScan::farEndHangsUpDuringACall()
{
    const SkkDesk desk;
    ProcessSKK.callNumber("123456");
    desk.receive("@E");
    (void)desk.sent();
    desk.receive("@H");
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
    QVERIFY(!State.connectionActive);
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(desk.names("out"), QStringList()); // no file is written
    QCOMPARE(State.SKK_out, 0);
}

/// The outcome of the try is not told: the row keeps the record of its start.
void TestSkkScan::farEndHangsUpInAutomaticMode()
{
    const SkkDesk desk;
    desk.automatic(AutoSendingFile, 1);
    desk.receive("@H");
    QCOMPARE(State.AutoModeState, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Входящий отбой",
                                        "312:00:00 Соединение сохранено out/20260731/s120000"}));
}

void TestSkkScan::hangUpCutInTwo()
{
    for (const int direction : {0, 1, 2}) {
        const SkkDesk desk;
        State.callDirection = direction;
        desk.receive("ШУМ@");
        QCOMPARE(State.callDirection, direction);
        desk.receive("H");
        QCOMPARE(desk.sent(), "@H");
        QCOMPARE(State.callDirection, 0);
        QCOMPARE(ProcessSKK.receiveBuffer, "");
    }
}

void TestSkkScan::noiseIsCutAboveTwoHundredFiftySix()
{
    const SkkDesk desk;
    desk.receive(QString(256, 'A'));
    QCOMPARE(ProcessSKK.receiveBuffer, QString(256, 'A'));
    desk.receive("B");
    QCOMPARE(ProcessSKK.receiveBuffer, QString(199, 'A') + 'B');
    desk.receive(QString(5000, 'C') + 'D');
    QCOMPARE(ProcessSKK.receiveBuffer, QString(199, 'C') + 'D');
}

void TestSkkScan::connectionIsNotCut_data()
{
    QTest::addColumn<int>("direction");
    row("incoming", 1);
    row("outgoing", 2);
}

void TestSkkScan::connectionIsNotCut()
{
    QFETCH(int, direction);
    const SkkDesk desk;
    desk.connect(direction);
    desk.receive(QString(5000, 'A'));
    desk.receive("B");
    QCOMPARE(ProcessSKK.receiveBuffer, QString(5000, 'A') + 'B');
}

void TestSkkScan::endOfTheConnectionCutsTheNoise()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive(QString(300, 'A'));
    ProcessSKK.clearSKKConnection();
    QCOMPARE(ProcessSKK.receiveBuffer.size(), 300);
    desk.receive("");
    QCOMPARE(ProcessSKK.receiveBuffer, QString(200, 'A'));
}

/// The first place in the buffer decides, and what is behind meets the state that it has left.
void TestSkkScan::orderOfForms_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("left");
    QTest::addColumn<int>("direction");
    row("call, question", "@C#*", "@E" + OwnAO, "", 1);
    row("question, call", "#*@C", OwnAO + "@E", "", 1);
    row("call, hang-up, call", "@C@H@C", "@H@E", "", 1);
    row("hang-up, seized", "@H@E", "@H", "", 0);
    row("telegram outside a connection", "ЗЦЗЦ ТЕКСТ НННН  @C", "@E", "", 1);
    row("telegram goes before what is in it", "@CЗЦЗЦ  КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ#*НННН  К", "@E", "К", 1);
}

void TestSkkScan::orderOfForms()
{
    QFETCH(QString, text);
    QFETCH(QString, sent);
    QFETCH(QString, left);
    QFETCH(int, direction);
    const SkkDesk desk;
    desk.receive(text);
    QCOMPARE(desk.sent(), sent);
    QCOMPARE(ProcessSKK.receiveBuffer, left);
    QCOMPARE(State.callDirection, direction);
}

QTEST_GUILESS_MAIN(TestSkkScan)
#include "test_skk_scan.moc"
