// What the network answers to a call: its refusals and its signs of success.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkResult : public QObject
{
    Q_OBJECT

private slots:
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

void TestSkkResult::result_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("description");
    row("OCC", "\r\n&OCC", 2, "Абонент занят");
    row("DER", "\r\n&DER", 3, "Повреждение абонента");
    row("NC", "\r\n&NC&", 4, "Нет цепи");
    row("NP", "\r\n&NP&", 5, "Неправильный набор");
    row("ABS", "\r\n&ABS", 6, "Абонент временно не работает");
    row("CI", "\r\n&CI&", 7, "Повреждение на сети");
    row("NA", "\r\n&NA&", 8, "Связь с абонентом запрещена");
    row("INF", "\r\n&INF", 9, "");
    row("NCH", "\r\n&NCH", 10, "");
    row("BK", "\r\n&BK\r\n", 11, "Соединение не установлено");
}

void TestSkkResult::result()
{
    QFETCH(QString, text);
    QFETCH(int, index);
    QFETCH(QString, description);
    for (int cut = 0; cut < text.size(); ++cut) {
        const SkkDesk desk;
        desk.automatic(AutoCalling, 61);
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

void TestSkkResult::resultOfAManualCall()
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

void TestSkkResult::lowerResultGoesFirst()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("\r\n&NC&\r\n&OCC\r\n&DER");
    QCOMPARE(State.callResult, 2);
    QCOMPARE(ProcessSKK.receiveBuffer, "\r\n&DER"); // with the call over it is noise
}

void TestSkkResult::resultOutsideTheWaitIsText_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 1, 2, 4, 6})
        QTest::addRow("%d", state) << state;
}

void TestSkkResult::resultOutsideTheWaitIsText()
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

void TestSkkResult::descriptions()
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

void TestSkkResult::stationTime()
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

void TestSkkResult::stationTimeIsToldOnRequest()
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

void TestSkkResult::resultGoesBeforeStationTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    row("result first", "\r\n&OCC\r\n #12.34", "\r\n #12.34");
    row("station time first", "\r\n #12.34\r\n&OCC", "");
    row("answered first", "&DF\r\n&OCC", "");
}

void TestSkkResult::resultGoesBeforeStationTime()
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

void TestSkkResult::emptyFormatTakesTwoFigures_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("left");
    row("two figures", "ШУМ#12", 6, "");
    row("more of them", "#1234", 6, "34");
    row("behind other marks", "##1#А2#56.7", 6, ".7");
    row("one figure", "#1", 5, "#1");
    row("a letter between", "#1А2", 5, "#1А2");
    row("a figure of another script", QStringLiteral("#1\u0661"), 5, QStringLiteral("#1\u0661"));
    row("no mark", "12.34", 5, "12.34");
    row("in front of the answer", "#12&DF", 6, "&DF");
}

void TestSkkResult::emptyFormatTakesTwoFigures()
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

void TestSkkResult::figuresAloneAreNothingWithAFormat()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("#12");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer, "#12");
}

void TestSkkResult::answered()
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
void TestSkkResult::successForms_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    row("time before answer", "hh", "&DF12К", "К");
    row("time before question", "hh", "А#*12К", "К");
    row("figures before answer", "", "&DF#12К", "К");
    row("answer before question", "", "А#*&DFК", "К");
}

void TestSkkResult::successForms()
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

void TestSkkResult::questionConnects_data()
{
    QTest::addColumn<int>("pause");
    row("answered at once", 0);
    row("answered later", 3);
}

void TestSkkResult::questionConnects()
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
void TestSkkResult::questionAtTheStartIsOnlyAnswered()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive("#*");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
}

void TestSkkResult::nothingKnownWaits()
{
    const SkkDesk desk;
    State.callState = 5;
    desk.receive(QString(1000, QChar('A')) + "@C");
    QCOMPARE(State.callState, 5);
    QCOMPARE(ProcessSKK.receiveBuffer.size(), 1002);
    QCOMPARE(State.callDirection, 0);
}

QTEST_GUILESS_MAIN(TestSkkResult)
#include "test_skk_result.moc"
