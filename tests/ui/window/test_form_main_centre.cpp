// A station with its window at a switching centre: what the queue, the quiet time and a confirmation make of
// whole seconds.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/form_main.h"

#include <QtTest>

class TestFormMainCentre : public QObject
{
    Q_OBJECT

private slots:
    void rowDoesNotGoAtTheFirstSecondOfTheQuietTime_data();
    void rowDoesNotGoAtTheFirstSecondOfTheQuietTime();
    void firstThingBehindTheQuietTimeIsARequest();
    void renumberingEndsTheQuietTimeEarly();
    void badRowBlocksTheQueueWithoutALine();
    void countersThatDifferAreToldOnce();
    void receiptMovesTheQueueOn();
    void unreadableRowIsTriedEachSecond();
    void confirmationGoesOutByItself();
    void programStartAsksForAReceiptInFiveSeconds();
};

namespace
{
const QString EndOfLine = QStringLiteral("\r\n");

/// A centre that has opened the channel, and rows \a names in the queue.
void open(Station &station, const QStringList &names = {QStringLiteral("20260731u001")})
{
    for (const QString &name : names)
        station.desk.write(QStringLiteral("out/") + name, "ПРИВЕТ");
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), names.size());
    State.scanCountdown = 1000;
    State.tlgMode = 3;
    State.secondsSinceRx = 10;
    station.setLinkUp(true);
    (void)station.news();
}
} // namespace

void TestFormMainCentre::rowDoesNotGoAtTheFirstSecondOfTheQuietTime_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("goes");
    row("23:55:59", QTime(23, 55, 59), true);
    row("23:56:00", QTime(23, 56, 0), false);
}

void TestFormMainCentre::rowDoesNotGoAtTheFirstSecondOfTheQuietTime()
{
    QFETCH(QTime, time);
    QFETCH(bool, goes);
    Station station(CKS);
    open(station);
    Time.setTo(QDateTime(QDate(2026, 7, 31), time).addSecs(-1));
    station.tick();
    QCOMPARE(State.fileInProgress, goes);
    QCOMPARE(State.dayChangeQuiet, !goes);
    QCOMPARE(station.desk.sent(), goes ? QStringLiteral("|ЗЦЗЦ 001 ПРИВЕТ НННН  ") : QString());
}

void TestFormMainCentre::firstThingBehindTheQuietTimeIsARequest()
{
    Station station(CKS);
    open(station);
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 0, 58)));
    State.dayChangeQuiet = true;
    station.form->slot_on_1sec(); // the turn of the day
    station.tick();
    QCOMPARE(station.desk.sent(), QString());
    station.tick(); // 00:01:00
    QVERIFY(!State.dayChangeQuiet);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЗ "));
}

void TestFormMainCentre::renumberingEndsTheQuietTimeEarly()
{
    Station station(CKS);
    open(station);
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 0, 10)));
    State.dayChangeQuiet = true;
    station.form->slot_on_1sec();
    station.receive(QStringLiteral("ЗЦЗЦ СМЕНА НУМЕРАЦИИ ПРИН 0000 ПЕР 0000 ОТКРОЙТЕ СВЯЗЬ НННН  0000\r\n"));
    station.tick();
    QVERIFY(!State.dayChangeQuiet);
    QCOMPARE(station.desk.sent(), QStringLiteral("\r\n|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    station.tick(3);
    QVERIFY(State.fileInProgress);
}

void TestFormMainCentre::badRowBlocksTheQueueWithoutALine()
{
    Station station(CKS);
    open(station, {QStringLiteral("20260731u001"), QStringLiteral("20260731u002")});
    station.form->modelSend.at(0).bad = true;
    station.tick(20);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(station.desk.sent(), QString());
    QCOMPARE(station.news(), QStringList());
    QVERIFY(!State.manualMode);
}

void TestFormMainCentre::countersThatDifferAreToldOnce()
{
    Station station(CKS);
    open(station);
    State.PK_out = 7;
    State.CKS_in = 6;
    station.tick(30);
    QVERIFY(State.manualMode);
    QCOMPARE(station.news().filter("отменена"),
             QStringList("312:00:01 Расхождение счетчиков, отправка  20260731u001 отменена"));
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЗ ")); // two seconds later, and no telegram

    State.setAutomatic(true);
    station.tick(30);
    QVERIFY(State.manualMode);
    QCOMPARE(station.news().filter("отменена").size(), 1);
}

void TestFormMainCentre::receiptMovesTheQueueOn()
{
    Station station(CKS);
    open(station, {QStringLiteral("20260731u001"), QStringLiteral("20260731u002")});
    station.tick();
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЦЗЦ 001 ПРИВЕТ НННН  "));
    station.reportSent(QStringLiteral("|ЗЦЗЦ 001 ПРИВЕТ НННН  "));
    QCOMPARE(State.askReceiptCountdown, 2);
    station.tick();
    QCOMPARE(station.desk.sent(), QString());
    station.tick();
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЗ "));
    station.tick(30); // the next one waits for the receipt
    QCOMPARE(station.desk.sent(), QString());

    station.receive(QStringLiteral("ЗЦЗЦ ВАШ 001 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4 НННН  ") +
                    EndOfLine);
    station.tick();
    QCOMPARE(station.desk.names("out/20260731"), QStringList("20260731u001.001"));
    station.tick(3);
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЦЗЦ 002 ПРИВЕТ НННН  "));
}

void TestFormMainCentre::unreadableRowIsTriedEachSecond()
{
    Station station(CKS);
    open(station);
    QVERIFY(QFile::remove(station.desk.path("out/20260731u001")));
    station.tick(3);
    QCOMPARE(station.news().filter("Невозможно прочитать файл").size(), 3);
    QCOMPARE(State.PK_out, 0);
    QVERIFY(!State.manualMode);
}

void TestFormMainCentre::confirmationGoesOutByItself()
{
    Station station(CKS, [] {
        Options.autoConfirmRTimeOut = 5;
        Options.lastOperator = QStringLiteral("ИВАНОВА");
    });
    open(station, {});
    station.receive(QStringLiteral("ЗЦЗЦ ПОДТВЕРДИТЕ ПРИЕМ Р 007 НННН  1200\r\n"));
    station.tick();
    QCOMPARE(State.tlgMode, 5);
    QVERIFY(ConfirmRDialog && ConfirmRDialog->isVisible());
    for (int second = 1; second < 5; ++second) {
        ConfirmRDialog->slotOn_1sec();
        QCOMPARE(station.desk.sent(), QString());
    }
    ConfirmRDialog->slotOn_1sec();
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЦЗЦ КС Р007 ПРИН ИВАНОВА НННН  "));
    QVERIFY(!ConfirmRDialog->isVisible());
    station.receive(QStringLiteral("ЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  1200\r\n"));
    station.tick();
    QCOMPARE(State.tlgMode, 3);
}

void TestFormMainCentre::programStartAsksForAReceiptInFiveSeconds()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.secondsSinceRx = 10;
    State.askReceiptCountdown = 5; // as the first tick sets it
    station.tick(4);
    QCOMPARE(station.desk.sent(), QString());
    station.tick();
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЗ "));
}

QTEST_MAIN(TestFormMainCentre)
#include "test_form_main_centre.moc"
