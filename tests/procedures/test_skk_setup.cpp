// The reading of the line while a call is set up.

#include "tests/procedures/skk_desk.h"

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

    void result_data();
    void result();
    void resultOfAManualCall();
    void lowerResultGoesFirst();
    void resultOutsideTheWaitIsText_data();
    void resultOutsideTheWaitIsText();
    void descriptions();

    void stationTime();
    void stationTimeIsToldOnRequest();
    void resultGoesBeforeStationTime_data();
    void resultGoesBeforeStationTime();
    void emptyFormatTakesTwoFigures_data();
    void emptyFormatTakesTwoFigures();
    void figuresAloneAreNothingWithAFormat();
    void answered();
    void successForms_data();
    void successForms();
    void questionConnects_data();
    void questionConnects();
    void questionAtTheStartIsOnlyAnswered();
    void nothingKnownWaits();
};

void TestSkkSetup::lineSeized_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("no call") << 0 << 0;
    QTest::newRow("dialled") << 1 << 5;
    QTest::newRow("seized") << 2 << 2;
    QTest::newRow("go-ahead") << 4 << 4;
    QTest::newRow("waiting for the result") << 5 << 5;
    QTest::newRow("connected") << 6 << 6;
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
    desk.connect(CProcessSKK::Outgoing);
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

void TestSkkSetup::result_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("description");
    QTest::newRow("OCC") << "\r\n&OCC" << 2 << "Абонент занят";
    QTest::newRow("DER") << "\r\n&DER" << 3 << "Повреждение абонента";
    QTest::newRow("NC") << "\r\n&NC&" << 4 << "Нет цепи";
    QTest::newRow("NP") << "\r\n&NP&" << 5 << "Неправильный набор";
    QTest::newRow("ABS") << "\r\n&ABS" << 6 << "Абонент временно не работает";
    QTest::newRow("CI") << "\r\n&CI&" << 7 << "Повреждение на сети";
    QTest::newRow("NA") << "\r\n&NA&" << 8 << "Связь с абонентом запрещена";
    QTest::newRow("INF") << "\r\n&INF" << 9 << "";
    QTest::newRow("NCH") << "\r\n&NCH" << 10 << "";
    QTest::newRow("BK") << "\r\n&BK\r\n" << 11 << "Соединение не установлено";
}

void TestSkkSetup::result()
{
    QFETCH(QString, text);
    QFETCH(int, index);
    QFETCH(QString, description);
    for (int cut = 0; cut < text.size(); ++cut) {
        const SkkDesk desk;
        desk.automatic(CProcessSKK::AutoCalling, 61);
        desk.receive("@EШУМ" + text.left(cut));
        QCOMPARE(State.callState, 5);
        desk.receive(text.mid(cut) + "ДАЛЬШЕ");
        QCOMPARE(State.callResult, index);
        QCOMPARE(State.callState, 0);
        QCOMPARE(State.waitTimeAfterCallEstablished, 0);
        QCOMPARE(State.AutoModeState, 0);
        QVERIFY(!State.connectionActive);
        QCOMPARE(State.sendInfo.resultText, description);
        QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ");
        QCOMPARE(desk.sent(), "@H");
        QCOMPARE(desk.noted(), QStringList("312:00:00 " + description));
    }
}

void TestSkkSetup::resultOfAManualCall()
{
    const SkkDesk desk;
    State.callState = 5;
    State.waitTimeAfterCallEstablished = 40;
    State.connectionActive = true;
    desk.receive("\r\n&OCC");
    QCOMPARE(State.callResult, 2);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
    QCOMPARE(desk.noted(), QStringList("312:00:00 Абонент занят"));
    QCOMPARE(desk.sent(), ""); // the adapter hangs up
    QVERIFY(State.connectionActive);
}

void TestSkkSetup::lowerResultGoesFirst()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("\r\n&NC&\r\n&OCC\r\n&DER");
    QCOMPARE(State.callResult, 2);
    QCOMPARE(ProcessSKK.receiveBuffer, "\r\n&DER"); // with the call over it is noise
}

void TestSkkSetup::resultOutsideTheWaitIsText_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 1, 2, 4, 6})
        QTest::addRow("%d", state) << state;
}

void TestSkkSetup::resultOutsideTheWaitIsText()
{
    QFETCH(int, state);
    const SkkDesk desk;
    State.callState = state;
    desk.receive("\r\n&OCC\r\n #12.00&DF");
    QCOMPARE(State.callState, state);
    QCOMPARE(State.callResult, 0);
    QCOMPARE(ProcessSKK.receiveBuffer, "\r\n&OCC\r\n #12.00&DF");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkSetup::descriptions()
{
    const QStringList texts{"",
                            "",
                            "Абонент занят",
                            "Повреждение абонента",
                            "Нет цепи",
                            "Неправильный набор",
                            "Абонент временно не работает",
                            "Повреждение на сети",
                            "Связь с абонентом запрещена",
                            "",
                            "",
                            "Соединение не установлено",
                            "Таймаут",
                            ""};
    for (int i = 0; i < texts.size(); ++i)
        QCOMPARE(CProcessSKK::resultDescription(i), texts.at(i));
    QCOMPARE(CProcessSKK::resultDescription(-1), "");
}

void TestSkkSetup::stationTime()
{
    const QString stamp = QStringLiteral("\r\n #12.34");
    for (int cut = 0; cut < stamp.size(); ++cut) {
        const SkkDesk desk;
        State.callState = 5;
        State.waitTimeAfterCallEstablished = 40;
        desk.receive("ШУМ" + stamp.left(cut));
        QCOMPARE(State.callState, 5);
        desk.receive(stamp.mid(cut) + "ДАЛЬШЕ");
        QCOMPARE(State.callState, 6);
        QCOMPARE(State.waitTimeAfterCallEstablished, 40);
        QCOMPARE(State.callDirection, 0);
        QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ");
        QCOMPARE(desk.noted(), QStringList());
        QCOMPARE(desk.sent(), "");
    }
}

void TestSkkSetup::stationTimeIsToldOnRequest()
{
    const SkkDesk desk;
    Options.debugInfoToProtocol = true;
    State.callState = 5;
    desk.receive("\r\n #12.34");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Время распознано"));
    State.callState = 5;
    desk.receive("&DF");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Время распознано"));
}

void TestSkkSetup::resultGoesBeforeStationTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    QTest::newRow("result first") << "\r\n&OCC\r\n #12.34"
                                  << "\r\n #12.34";
    QTest::newRow("station time first") << "\r\n #12.34\r\n&OCC"
                                        << "";
    QTest::newRow("answered first") << "&DF\r\n&OCC"
                                    << "";
}

void TestSkkSetup::resultGoesBeforeStationTime()
{
    QFETCH(QString, text);
    QFETCH(QString, left);
    const SkkDesk desk;
    State.callState = 5;
    desk.receive(text);
    QCOMPARE(State.callResult, 2);
    QCOMPARE(State.callState, 0);
    QCOMPARE(ProcessSKK.receiveBuffer, left);
}

void TestSkkSetup::emptyFormatTakesTwoFigures_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("left");
    QTest::newRow("two figures") << "ШУМ#12" << 6 << "";
    QTest::newRow("more of them") << "#1234" << 6 << "34";
    QTest::newRow("behind other marks") << "##1#А2#56.7" << 6 << ".7";
    QTest::newRow("one figure") << "#1" << 5 << "#1";
    QTest::newRow("a letter between") << "#1А2" << 5 << "#1А2";
    QTest::newRow("a figure of another script")
        << QStringLiteral("#1\u0661") << 5 << QStringLiteral("#1\u0661");
    QTest::newRow("no mark") << "12.34" << 5 << "12.34";
    QTest::newRow("in front of the answer") << "#12&DF" << 6 << "&DF";
}

void TestSkkSetup::emptyFormatTakesTwoFigures()
{
    QFETCH(QString, text);
    QFETCH(int, state);
    QFETCH(QString, left);
    const SkkDesk desk;
    Options.timeFormat.clear();
    State.callState = 5;
    desk.receive(text);
    QCOMPARE(State.callState, state);
    QCOMPARE(ProcessSKK.receiveBuffer, left);
}

void TestSkkSetup::figuresAloneAreNothingWithAFormat()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("#12");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer, "#12");
}

void TestSkkSetup::answered()
{
    for (int cut = 0; cut < 3; ++cut) {
        const SkkDesk desk;
        State.callState = 5;
        const QString form = QStringLiteral("&DF");
        desk.receive("ШУМ" + form.left(cut));
        QCOMPARE(State.callState, 5);
        desk.receive(form.mid(cut) + "ДАЛЬШЕ");
        QCOMPARE(State.callState, 6);
        QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ");
    }
}

/// The forms of success go in their order, wherever they stand.
void TestSkkSetup::successForms_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    QTest::newRow("time before answer") << "hh"
                                        << "&DF12К"
                                        << "К";
    QTest::newRow("time before question") << "hh"
                                          << "А#*12К"
                                          << "К";
    QTest::newRow("figures before answer") << ""
                                           << "&DF#12К"
                                           << "К";
    QTest::newRow("answer before question") << ""
                                            << "А#*&DFК"
                                            << "К";
}

void TestSkkSetup::successForms()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QFETCH(QString, left);
    const SkkDesk desk;
    Options.timeFormat = format;
    State.ignoreAO = true; // or the scan itself would answer what comes to stand first
    State.callState = 5;
    desk.receive(text);
    QCOMPARE(State.callState, 6);
    QCOMPARE(ProcessSKK.receiveBuffer, left);
    QCOMPARE(desk.sent(), "");
}

void TestSkkSetup::questionConnects_data()
{
    QTest::addColumn<int>("pause");
    QTest::newRow("answered at once") << 0;
    QTest::newRow("answered later") << 3;
}

void TestSkkSetup::questionConnects()
{
    QFETCH(int, pause);
    const SkkDesk desk;
    Options.SKKTiming[0].Pause_Before_Send_AA = pause;
    ProcessSKK.timing = &Options.SKKTiming[1]; // its pause is another and does not count
    State.callState = 5;
    State.waitTimeAfterCallEstablished = 40;
    desk.receive("А#*#*");
    QCOMPARE(State.callState, 6);
    QCOMPARE(ProcessSKK.receiveBuffer, "#*"); // the call of the scan ends behind the first
    QCOMPARE(State.sendAOCountdown, pause);
    QCOMPARE(desk.sent(), pause == 0 ? "#\r\n777777 ДЕСК" : "");
}

/// Where it is the first thing in the buffer it is a question like any other.
void TestSkkSetup::questionAtTheStartIsOnlyAnswered()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("#*");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
}

void TestSkkSetup::nothingKnownWaits()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive(QString(1000, QChar('A')) + "@C");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer.size(), 1002);
    QCOMPARE(State.callDirection, 0);
}

QTEST_GUILESS_MAIN(TestSkkSetup)
#include "test_skk_setup.moc"
