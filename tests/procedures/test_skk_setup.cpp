// The reading of the line while a call is set up.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

class TestSkkSetup : public QObject
{
    Q_OBJECT

private slots:
    void lineSeized_data();
    void lineSeized();
    void seizingTellsTheWindowOnce();
    void incomingCall();
    void identificationIsDropped();
    void stationSignalBeginsTheWait();
    void stationSignalTakesTheWatchdogOfTheRow();
    void secondStationSignalStaysAsText();
    void eventsInsideAConnectionAreText();
    void unknownCommandIsPassedOver();

    void goAhead();
    void goAheadMustBeWhole();
    void goAheadHidesWhatStandsInFront();
};

void TestSkkSetup::lineSeized_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    row("no call", 0, 0);
    row("dialled", 1, 5);
    row("seized", 2, 2);
    row("go-ahead", 4, 4);
    row("waiting for the result", 5, 5);
    row("connected", 6, 6);
}

void TestSkkSetup::lineSeized()
{
    QFETCH(int, before);
    QFETCH(int, after);
    const SkkDesk desk;
    State.callState = before;
    ProcessSKK.secondsSinceCmdIn = 9;
    ProcessSKK.processReceiveCmd("@E");
    QCOMPARE(State.callState, after);
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'E');
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 0);
    QVERIFY(State.connectionActive);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.connectionText, ""); // a command is no part of the transcript
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkSetup::seizingTellsTheWindowOnce()
{
    const SkkDesk desk;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    desk.receive("@E");
    QCOMPARE(told.count(), 1);
    desk.receive("@E");
    QCOMPARE(told.count(), 1);
}

void TestSkkSetup::incomingCall()
{
    const SkkDesk desk;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    ProcessSKK.secondsSinceCmdIn = 9;
    desk.receive("ШУМ@C");
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'C');
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 0);
    QCOMPARE(char(ProcessSKK.lastCmdOut), 'E');
    QVERIFY(State.connectionActive);
    QCOMPARE(State.callDirection, 1);
    QCOMPARE(State.tlgMode, 2);
    QCOMPARE(State.SKK_in, 0); // counted at its end
    QCOMPARE(told.count(), 1);
    QCOMPARE(desk.sent(), "@E");
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Входящий вызов"));
}

void TestSkkSetup::identificationIsDropped()
{
    const SkkDesk desk;
    ProcessSKK.secondsSinceCmdIn = 9;
    desk.receive("А@IБ");
    QCOMPARE(ProcessSKK.receiveBuffer, "Б");
    QCOMPARE(int(ProcessSKK.lastCmdIn), 0);
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 9);
    QVERIFY(!State.connectionActive);
}

void TestSkkSetup::stationSignalBeginsTheWait()
{
    const SkkDesk desk;
    ProcessSKK.secondsSinceCmdIn = 9;
    desk.receive("А@SБ");
    QCOMPARE(State.callState, 5);
    QCOMPARE(State.waitTimeAfterCallEstablished, 62);
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'S');
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 0);
    QVERIFY(!State.connectionActive);
    QCOMPARE(ProcessSKK.receiveBuffer, "Б");
}

void TestSkkSetup::stationSignalTakesTheWatchdogOfTheRow()
{
    const SkkDesk desk;
    ProcessSKK.timing = &Options.SKKTiming[1];
    desk.receive("@S");
    QCOMPARE(State.waitTimeAfterCallEstablished, 72);
}

void TestSkkSetup::secondStationSignalStaysAsText()
{
    const SkkDesk desk;
    desk.receive("@S");
    desk.tick(3);
    ProcessSKK.secondsSinceCmdIn = 9;
    desk.receive("@S");
    QCOMPARE(ProcessSKK.receiveBuffer, "@S");
    QCOMPARE(State.waitTimeAfterCallEstablished, 59);
    QCOMPARE(State.callState, 5);
    QCOMPARE(char(ProcessSKK.lastCmdIn), 'S');
    QCOMPARE(ProcessSKK.secondsSinceCmdIn, 0);
    // The search for a result goes past it.
    desk.receive("\r\n&OCC");
    QCOMPARE(State.callResult, 2);
    QCOMPARE(ProcessSKK.receiveBuffer, "");
}

void TestSkkSetup::eventsInsideAConnectionAreText()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive("@E@C@I@S");
    QCOMPARE(ProcessSKK.receiveBuffer, "@E@C@I@S");
    QCOMPARE(int(ProcessSKK.lastCmdIn), 0);
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkSetup::unknownCommandIsPassedOver()
{
    const SkkDesk desk;
    desk.receive("@@57*@N123@ @Е@"); // the last letter is Cyrillic
    QCOMPARE(ProcessSKK.receiveBuffer, "@@57*@N123@ @Е@");
    QCOMPARE(int(ProcessSKK.lastCmdIn), 0);
    QVERIFY(!State.connectionActive);
}

void TestSkkSetup::goAhead()
{
    const SkkDesk desk;
    Options.tlgSig = 2;
    ProcessSKK.callNumber("123456");
    desk.receive("@E");
    QCOMPARE(State.callState, 2);
    desk.tick(10);
    desk.receive("ШУМ\r\n&GA #ДАЛЬШЕ@C");
    QCOMPARE(State.callState, 4);
    QCOMPARE(State.waitTimeAfterCallEstablished, 62);
    QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ@C"); // the call of the scan ends here
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(desk.sent(), "@E");
    desk.tick();
    QCOMPARE(desk.sent(), "#123456");
    QCOMPARE(State.callState, 5);
}

void TestSkkSetup::goAheadMustBeWhole()
{
    const QString form = QStringLiteral("\r\n&GA #");
    for (int cut = 0; cut < form.size(); ++cut) {
        const SkkDesk desk;
        State.callState = 2;
        State.waitTimeAfterCallEstablished = 3;
        desk.receive(form.left(cut));
        QCOMPARE(State.callState, 2);
        QCOMPARE(ProcessSKK.receiveBuffer, form.left(cut));
        desk.receive(form.mid(cut));
        QCOMPARE(State.callState, 4);
        QCOMPARE(State.waitTimeAfterCallEstablished, 62);
        QCOMPARE(ProcessSKK.receiveBuffer, "");
    }
}

/// What stands at the very start is still read as anywhere.
void TestSkkSetup::goAheadHidesWhatStandsInFront()
{
    const SkkDesk desk;
    State.callState = 2;
    desk.receive("@IШУМ@I");
    QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ@I");
    desk.receive(QString(300, QChar('A')));
    QCOMPARE(ProcessSKK.receiveBuffer.size(), 305); // a call that ends early cuts nothing
}

QTEST_GUILESS_MAIN(TestSkkSetup)
#include "test_skk_setup.moc"
