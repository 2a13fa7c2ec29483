// The signals of a network switch in text form, on TCP links.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

class TestSkkSwitch : public QObject
{
    Q_OBJECT

private slots:
    void signalsAreTextOnOtherLinks();
    void signalsWaitForTheirLineFeed_data();
    void signalsWaitForTheirLineFeed();
    void hangUp_data();
    void hangUp();
    void hangUpTellsNothing();
    void channelName_data();
    void channelName();
    void refusal_data();
    void refusal();
    void refusalEndsTheAutomaticCall_data();
    void refusalEndsTheAutomaticCall();
    void wordsBehindTheLineDoNotCount();
    void refusalCutAnywhere();
    void incomingCall();
    void incomingCallCutAnywhere();
    void callAccepted();
    void insideAConnectionOnlyTheHangUpIsRead();
    void otherSignalsArePassedOver();
    void adapterEventsAreReadToo();
};

void TestSkkSwitch::signalsAreTextOnOtherLinks()
{
    const SkkDesk desk;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    const QString text =
        QStringLiteral("!>ОТБОЙ\n!>ВЫЗОВ\n!>СИГНАЛ NP\nТОЧКА КАНАЛ: АБ-123/45\n=>ВЫЗОВ ПРИНЯТ\n");
    desk.receive(text);
    QCOMPARE(ProcessSKK.receiveBuffer, text);
    QCOMPARE(State.callNumberResult, 0);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.channelName, "");
    QCOMPARE(desk.sent(), "");
    QCOMPARE(told.count(), 0);
}

void TestSkkSwitch::signalsWaitForTheirLineFeed_data()
{
    QTest::addColumn<QString>("signal");
    row("hang-up", "!>ОТБОЙ");
    row("channel", "ТОЧКА 1 КАНАЛ: АБ-123/45");
    row("refusal", "!>СИГНАЛ NP");
    row("call", "!>ВЫЗОВ 123456\r");
    row("accepted", "=>ВЫЗОВ ПРИНЯТ");
}

void TestSkkSwitch::signalsWaitForTheirLineFeed()
{
    QFETCH(QString, signal);
    const SkkDesk desk;
    Options.TcpMode = true;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    desk.receive("ШУМ" + signal);
    desk.receive("@C"); // the scan does not come as far
    QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ" + signal + "@C");
    QCOMPARE(State.callNumberResult, 0);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.channelName, "");
    QCOMPARE(desk.sent(), "");
    QCOMPARE(told.count(), 0);
    desk.receive("\n");
    QCOMPARE(ProcessSKK.receiveBuffer, "\n"); // everything up to the line feed is gone
}

void TestSkkSwitch::hangUp_data()
{
    QTest::addColumn<int>("direction");
    row("none", 0);
    row("incoming", 1);
    row("outgoing", 2);
}

void TestSkkSwitch::hangUp()
{
    QFETCH(int, direction);
    const QString signal = QStringLiteral("!>ОТБОЙ 12\r\n");
    for (int cut = 0; cut < signal.size(); ++cut) {
        const SkkDesk desk;
        Options.TcpMode = true;
        State.callDirection = direction;
        State.connectionActive = true;
        ProcessSKK.SendTlgText("НЕ УШЛО");
        desk.receive("ШУМ" + signal.left(cut));
        QVERIFY(State.connectionActive);
        QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ" + signal.left(cut));
        desk.receive(signal.mid(cut) + "К");
        QVERIFY(!State.connectionActive);
        QCOMPARE(State.callDirection, 0);
        QCOMPARE(desk.sent(), "@H");
        QCOMPARE(ProcessSKK.receiveBuffer, "\nК");
    }
}

void TestSkkSwitch::hangUpTellsNothing()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    desk.connect(Incoming);
    desk.receive("!>ОТБОЙ\n");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Соединение сохранено inp/20260731/s120000"));
    QCOMPARE(int(ProcessSKK.lastCmdIn), 0);
}

void TestSkkSwitch::channelName_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    row("nine characters", "ТОЧКА 1 КАНАЛ: АБ-123/456\n", "АБ-123/45");
    row("as far as the text goes", "ТОЧКА КАНАЛ: АБ-1\n", "АБ-1\n");
    row("shortest", "ТОЧКА КАНАЛ: А\n-", "А\n-");
    row("two characters", "ТОЧКА КАНАЛ: А\n", "");
    row("dash elsewhere", "ТОЧКА КАНАЛ: АБВ-123\n", "");
    row("no channel", "ТОЧКА АБ-123/45\n", "");
    row("channel without its blank", "ТОЧКА КАНАЛ:АБ-123/45\n", "");
    row("first of two", "ТОЧКА КАНАЛ: 11-111111 КАНАЛ: 22-222222\n", "11-111111");
    row("of a later line", "ТОЧКА\nКАНАЛ: 11-111111", "11-111111");
    row("only behind", "КАНАЛ: 11-111111ТОЧКА\n", "");
}

void TestSkkSwitch::channelName()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    const SkkDesk desk;
    Options.TcpMode = true;
    desk.receive(text);
    QCOMPARE(State.channelName, name);
    QCOMPARE(ProcessSKK.receiveBuffer, text.mid(text.indexOf('\n')));
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkSwitch::refusal_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("result");
    row("OCC", "!>СИГНАЛ OCC\n", 2);
    row("DER", "!>СИГНАЛ DER\n", 3);
    row("NC", "!>СИГНАЛ NC\n", 4);
    row("NP", "!>СИГНАЛ NP\n", 5);
    row("none", "!>СИГНАЛ ABS\n", 0);
    row("nothing", "!>СИГНАЛ\n", 0);
    row("OCC first", "!>СИГНАЛ NP NC DER OCC\n", 2);
    row("DER before NC", "!>СИГНАЛ NP NC DER\n", 3);
    row("NC before NP", "!>СИГНАЛNPNC\n", 4);
    row("Cyrillic letters", "!>СИГНАЛ ОСС\n", 0);
}

void TestSkkSwitch::refusal()
{
    QFETCH(QString, signal);
    QFETCH(int, result);
    const SkkDesk desk;
    Options.TcpMode = true;
    State.callNumberResult = 7;
    State.callState = 1;
    State.callResult = 12;
    desk.receive(signal);
    QCOMPARE(State.callNumberResult, result);
    // Without an automatic send this is all.
    QCOMPARE(State.callResult, 12);
    QCOMPARE(State.callState, 1);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList());
    QCOMPARE(ProcessSKK.receiveBuffer, "\n");
}

void TestSkkSwitch::refusalEndsTheAutomaticCall_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("ends");
    row("OCC", "!>СИГНАЛ OCC\n", true);
    row("DER", "!>СИГНАЛ DER\n", true);
    row("NC", "!>СИГНАЛ NC\n", true);
    row("NP", "!>СИГНАЛ NP\n", true);
    row("none", "!>СИГНАЛ ABS\n", false);
}

void TestSkkSwitch::refusalEndsTheAutomaticCall()
{
    QFETCH(QString, signal);
    QFETCH(bool, ends);
    const SkkDesk desk;
    Options.TcpMode = true;
    desk.automatic(AutoCalling, 61);
    desk.receive(signal);
    QCOMPARE(State.AutoModeState, ends ? 0 : 1);
    QCOMPARE(desk.sent(), ends ? "@H" : "");
    // The signal is no result of the call, so the next try is that of any call without one.
    QCOMPARE(State.callResult, 0);
    QCOMPARE(desk.record(),
             ends ? "12345678|S|31.07.2026 12:05|u|2|N|" : "12345678|S|31.07.2026 11:59|u|2|N|");
}

void TestSkkSwitch::wordsBehindTheLineDoNotCount()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    desk.receive("OCC!>СИГНАЛ \nOCC");
    QCOMPARE(State.callNumberResult, 0);
}

void TestSkkSwitch::refusalCutAnywhere()
{
    const QString signal = QStringLiteral("!>СИГНАЛ NP\n");
    for (int cut = 0; cut < signal.size(); ++cut) {
        const SkkDesk desk;
        Options.TcpMode = true;
        desk.receive(signal.left(cut));
        QCOMPARE(State.callNumberResult, 0);
        desk.receive(signal.mid(cut));
        QCOMPARE(State.callNumberResult, 5);
    }
}

void TestSkkSwitch::incomingCall()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    desk.receive("!>ВЫЗОВ 654321\r\nДАЛЬШЕ");
    QVERIFY(State.connectionActive);
    QCOMPARE(State.callDirection, 1);
    QCOMPARE(State.tlgMode, 2);
    QCOMPARE(told.count(), 1);
    QCOMPARE(desk.sent(), "@E");
    QCOMPARE(int(ProcessSKK.lastCmdIn), 0);
    QCOMPARE(char(ProcessSKK.lastCmdOut), 'E');
    QCOMPARE(ProcessSKK.receiveBuffer, "\nДАЛЬШЕ");
    QCOMPARE(desk.noted(), QStringList()); // only the adapter's event has a line
}

void TestSkkSwitch::incomingCallCutAnywhere()
{
    const QString signal = QStringLiteral("!>ВЫЗОВ\n");
    for (int cut = 0; cut < signal.size(); ++cut) {
        const SkkDesk desk;
        Options.TcpMode = true;
        desk.receive(signal.left(cut));
        QCOMPARE(State.callDirection, 0);
        desk.receive(signal.mid(cut));
        QCOMPARE(State.callDirection, 1);
        QCOMPARE(desk.sent(), "@E");
    }
}

void TestSkkSwitch::callAccepted()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    desk.receive("=>ВЫЗОВ ПРИНЯТ\n");
    QCOMPARE(told.count(), 1);
    QCOMPARE(ProcessSKK.receiveBuffer, "\n");
    QCOMPARE(State.callDirection, 0);
    QVERIFY(!State.connectionActive);
    QCOMPARE(desk.sent(), "");
}

void TestSkkSwitch::insideAConnectionOnlyTheHangUpIsRead()
{
    for (const int direction : {1, 2}) {
        const SkkDesk desk;
        Options.TcpMode = true;
        desk.connect(direction);
        QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
        const QString text = QStringLiteral("!>ВЫЗОВ\n!>СИГНАЛ NP\nТОЧКА КАНАЛ: АБ-123/45\n=>ВЫЗОВ ПРИНЯТ\n");
        desk.receive(text);
        QCOMPARE(ProcessSKK.receiveBuffer, text);
        QCOMPARE(State.callNumberResult, 0);
        QCOMPARE(State.channelName, "");
        QCOMPARE(State.callDirection, direction);
        QCOMPARE(told.count(), 0);
        QCOMPARE(desk.sent(), "");
        desk.receive("!>ОТБОЙ\n");
        // Nothing stays in front of it, and the noise behind is not read again as a signal.
        QCOMPARE(ProcessSKK.receiveBuffer, "\n");
        QCOMPARE(State.callDirection, 0);
    }
}

void TestSkkSwitch::otherSignalsArePassedOver()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    const QString text = QStringLiteral("!\n!>\n!>ВЫХОД\n>ВЫЗОВ\n=>ВЫЗОВ\nТОЧКИ\n!>СИГНА\n!>ОТБОИ\n");
    desk.receive(text);
    QCOMPARE(ProcessSKK.receiveBuffer, text);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(desk.sent(), "");
}

void TestSkkSwitch::adapterEventsAreReadToo()
{
    const SkkDesk desk;
    Options.TcpMode = true;
    State.callState = 1;
    desk.receive("@E\r\n #12.34");
    QCOMPARE(State.callState, 6);
    desk.receive("@C");
    QCOMPARE(State.callDirection, 1);
}

QTEST_GUILESS_MAIN(TestSkkSwitch)
#include "test_skk_switch.moc"
