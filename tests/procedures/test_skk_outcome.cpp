// How the automatic send ends, by state and by the result of the call.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

class TestSkkOutcome : public QObject
{
    Q_OBJECT

private slots:
    void idleMachineStays();
    void outcomeOfEachState_data();
    void outcomeOfEachState();
    void outcomeOfEachResult_data();
    void outcomeOfEachResult();
    void triesOfTheWrongNumber_data();
    void triesOfTheWrongNumber();
    void busyAtTheFirstTry();
    void wrongNumberAtTheFirstTry();
    void afterTheBookingTheRecordHasNoName();
    void withoutAFileNoRecordIsWritten();
    void endWithoutOutcomeKeepsTheRecordOfTheStart();
    void recordThatCannotBeSavedIsNoHindrance();
};

namespace
{
const QString Stored = QStringLiteral("312:00:00 Соединение сохранено out/20260731/s120000");
const QString Unknown = QStringLiteral("312:00:00 АО не распознан");
} // namespace

void TestSkkOutcome::idleMachineStays()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    State.fileInProgress = true;
    State.AutoModeWaitTimer = 4;
    ProcessSKK.clearAutoMode();
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(State.hangUpPause, 0);
    QCOMPARE(State.AutoModeWaitTimer, 4);
    QVERIFY(State.fileInProgress);
    QCOMPARE(desk.sent(), "");
}

void TestSkkOutcome::outcomeOfEachState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("record");
    QTest::addColumn<QStringList>("notes");
    const auto row = [](int state, const QString &time, const QString &text, const QStringList &notes) {
        QTest::addRow("%d", state) << state << "12345678|S|31.07.2026 " + time + "|u|2|N|" + text << notes;
    };
    row(2, "11:59", "ПРЕЖНИЙ", {Stored});
    row(3, "12:05", "ПРЕЖНИЙ", {Unknown, Stored});
    row(4, "11:59", "Нет ответа", {Unknown, Stored});
    row(5, "11:59", "Нет ответа", {Unknown, Stored});
    for (const int state : {6, 10, 11, 13})
        row(state, "11:59", "Файл не отправлен", {Stored});
    row(14, "11:59", "Нет ответа после отправки файла", {Stored});
    for (const int state : {15, 16, 17})
        row(state, "11:59", "ПРЕЖНИЙ", {Stored});
}

void TestSkkOutcome::outcomeOfEachState()
{
    QFETCH(int, state);
    QFETCH(QString, record);
    QFETCH(QStringList, notes);
    const SkkDesk desk;
    desk.automatic(state, 9);
    State.sendInfo.resultText = QStringLiteral("ПРЕЖНИЙ");
    State.AutoModeWaitAA = 7;
    ProcessSKK.clearAutoMode();
    QCOMPARE(desk.record(), record);
    QCOMPARE(desk.noted(), notes);
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(State.AutoModeWaitAA, 0);
    QCOMPARE(State.AutoModeWaitTimer, 0);
    QCOMPARE(State.hangUpPause, 5);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QVERIFY(!State.connectionActive);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(desk.sent(), "@H");
    QVERIFY(QFile::exists(desk.path("out/a")));
}

void TestSkkOutcome::outcomeOfEachResult_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("record");
    const auto row =
        [](int result, const char *time, int trys, const char *text) {
            QTest::addRow("%d", result)
                << result
                << QStringLiteral("12345678|S|31.07.2026 %1|u|%2|N|%3").arg(time).arg(trys).arg(text);
        };
    row(0, "12:05", 2, "");
    row(1, "12:05", 2, "");
    row(2, "12:05", 2, "Абонент занят");
    row(3, "13:00", 2, "Повреждение абонента");
    row(4, "12:05", 2, "Нет цепи");
    row(5, "12:00", 1, "Неправильный набор");
    row(6, "12:05", 2, "Абонент временно не работает");
    row(7, "12:15", 2, "Повреждение на сети");
    row(8, "11:59", 0, "Связь с абонентом запрещена");
    row(9, "12:05", 2, "");
    row(10, "12:05", 2, "");
    row(11, "12:05", 2, "Соединение не установлено");
    row(12, "12:05", 2, "Таймаут");
}

void TestSkkOutcome::outcomeOfEachResult()
{
    QFETCH(int, result);
    QFETCH(QString, record);
    const SkkDesk desk;
    desk.automatic(1, 9);
    State.callResult = result;
    State.sendInfo.resultText = QStringLiteral("ПРЕЖНИЙ");
    ProcessSKK.clearAutoMode();
    QCOMPARE(desk.record(), record);
    QCOMPARE(desk.noted(), QStringList());
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(desk.sent(), "@H");
}

void TestSkkOutcome::triesOfTheWrongNumber_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    row("none left", 0, 0);
    row("one left", 1, 1);
    row("two left", 2, 1);
    row("many left", 9, 1);
}

void TestSkkOutcome::triesOfTheWrongNumber()
{
    QFETCH(int, before);
    QFETCH(int, after);
    const SkkDesk desk;
    desk.automatic(1, 9);
    State.callResult = 5;
    State.sendInfo.trys = before;
    ProcessSKK.clearAutoMode();
    QCOMPARE(State.sendInfo.trys, after);
    QCOMPARE(State.sendInfo.sendTime, Time.dateTime.addSecs(30));
}

void TestSkkOutcome::busyAtTheFirstTry()
{
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a"); // three tries
    ProcessSKK.checkForSendNewTlg(item);
    desk.receive("@E");
    desk.receive("\r\n&OCC");
    QCOMPARE(State.sendInfo.trys, 2);
    QCOMPARE(State.sendInfo.sendTime, Time.dateTime.addSecs(300));
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 12:05|u|2|N|Абонент занят");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Установка соединения для отправки файла a",
                                        "312:00:00 Набор номера 12345678", "312:00:00 Абонент занят"}));
}

void TestSkkOutcome::wrongNumberAtTheFirstTry()
{
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a");
    ProcessSKK.checkForSendNewTlg(item);
    desk.receive("@E\r\n&NP&");
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 12:00|u|1|N|Неправильный набор");
}

/// It is so on every workstation: the empty name has a record.
void TestSkkOutcome::afterTheBookingTheRecordHasNoName()
{
    const SkkDesk desk;
    desk.automatic(17, 1);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    desk.autoTick();
    QCOMPARE(desk.record(""), "12345678|S|31.07.2026 11:59|u|2|N|");
    QVERIFY(!QFile::exists(desk.path("out/a.dat")));
}

void TestSkkOutcome::withoutAFileNoRecordIsWritten()
{
    const SkkDesk desk;
    desk.automatic(14, 1);
    QVERIFY(QFile::remove(desk.path("out/a.dat")));
    State.fileInProgress = false;
    ProcessSKK.clearAutoMode();
    QVERIFY(!QFile::exists(desk.path("out/a.dat")));
    QVERIFY(!QFile::exists(desk.path("out/.dat")));
}

void TestSkkOutcome::endWithoutOutcomeKeepsTheRecordOfTheStart()
{
    for (const int state : {1, 3, 5, 11, 14}) {
        const SkkDesk desk;
        desk.automatic(state, 9);
        State.callResult = 2;
        ProcessSKK.clearSKKConnection(); // idle hang-up, loss of the link
        QCOMPARE(State.AutoModeState, 0);
        QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|");
        desk.autoTick(20); // the timer runs out without a step
        QCOMPARE(desk.sent(), "@H");
    }
}

void TestSkkOutcome::recordThatCannotBeSavedIsNoHindrance()
{
    const SkkDesk desk;
    desk.automatic(14, 1);
    QVERIFY(QFile::remove(desk.path("out/a.dat")));
    QVERIFY(QDir().mkdir(desk.path("out/a.dat")));
    ProcessSKK.clearAutoMode();
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(desk.noted(), QStringList(Stored));
}

QTEST_GUILESS_MAIN(TestSkkOutcome)
#include "test_skk_outcome.moc"
