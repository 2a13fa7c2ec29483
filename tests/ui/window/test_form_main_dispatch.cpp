#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QtTest>

class TestFormMainDispatch : public QObject
{
    Q_OBJECT

private slots:
    void downLinkEndsThePause();
    void manualModeHoldsPauseAndQueue();
    void pauseRunsDownBeforeTheQueueMoves();
    void directRowGoesOnlyAfterItsStamp_data();
    void directRowGoesOnlyAfterItsStamp();
    void futureRowGoesAtTheSecondAfterItsStamp();
    void directRowWaitsWhileAFileIsInProgress();
    void directRowWaitsForAnEmptySendBuffer();
    void directRowWaitsUntilTheLinkHasSentAll();
    void processMode3SelectsNoneOfTheThreeProcedures();
    void emptyQueueSendsNothing();
    void fileFoundByTheScanGoesInTheSameTick();
    void nothingIsDispatchedUnderAnotherDispatch();
    void centreRowGoesAfterFourQuietSeconds();
    void centreRowWaits_data();
    void centreRowWaits();
    void receiptIsDueEachThirtiethSecondInModeBA_data();
    void receiptIsDueEachThirtiethSecondInModeBA();
    void requestIsDueEachSixtiethSecondInModeNone_data();
    void requestIsDueEachSixtiethSecondInModeNone();
    void silentDayLeavesThePeriodAsItIs_data();
    void silentDayLeavesThePeriodAsItIs();
    void newModeEndsThePeriodOfTheOld();
    void periodicTrafficNeedsAutomaticModeAndLink();
    void periodicTrafficRestsInTheQuietTime();
};

namespace
{
const QString Marked = QStringLiteral("ЗЦЗЦ 1\r\nПРИВЕТ\r\nНННН  ");

/// A direct link that is up, with one row in the queue that may go.
void readyToSend(Station &station)
{
    station.queueDirect(QStringLiteral("260731_110000"), Marked.toUtf8());
    station.form->scanDir();
    State.scanCountdown = 1000;
    station.setLinkUp(true);
}

/// A centre that has opened the channel, with one row for it in the queue.
void readyForCentre(Station &station)
{
    station.desk.write(QStringLiteral("out/20260731u001"), "ПРИВЕТ");
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
    State.scanCountdown = 1000;
    State.tlgMode = 3;
    station.setLinkUp(true);
}
} // namespace

void TestFormMainDispatch::downLinkEndsThePause()
{
    Station station(Direct);
    State.hangUpPause = 7;
    station.tick();
    QCOMPARE(State.hangUpPause, 0);
}

void TestFormMainDispatch::manualModeHoldsPauseAndQueue()
{
    Station station(Direct);
    readyToSend(station);
    State.manualMode = true;
    State.hangUpPause = 7;
    station.tick(3);
    QCOMPARE(State.hangUpPause, 7);
    State.hangUpPause = 0;
    station.tick(3);
    QVERIFY(!State.fileInProgress);
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainDispatch::pauseRunsDownBeforeTheQueueMoves()
{
    Station station(Direct);
    readyToSend(station);
    State.hangUpPause = 2;
    station.tick();
    QCOMPARE(State.hangUpPause, 1);
    station.tick();
    QCOMPARE(State.hangUpPause, 0);
    QVERIFY(!State.fileInProgress);
    station.tick();
    QVERIFY(State.fileInProgress);
}

void TestFormMainDispatch::directRowGoesOnlyAfterItsStamp_data()
{
    QTest::addColumn<QString>("stamp");
    QTest::addColumn<bool>("goes");
    row("a second before", "260731_120000", true);
    row("the very second", "260731_120001", false);
    row("a second after", "260731_120002", false);
    row("yesterday", "260730_235959", true);
    row("next year", "270101_000000", false);
}

void TestFormMainDispatch::directRowGoesOnlyAfterItsStamp()
{
    QFETCH(QString, stamp);
    Station station(Direct);
    station.queueDirect(stamp, Marked.toUtf8());
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
    State.scanCountdown = 1000;
    station.setLinkUp(true);
    station.tick(); // to 12:00:01
    QTEST(State.fileInProgress, "goes");
}

void TestFormMainDispatch::futureRowGoesAtTheSecondAfterItsStamp()
{
    Station station(Direct);
    station.queueDirect(QStringLiteral("260731_120003"), Marked.toUtf8());
    station.form->scanDir();
    State.scanCountdown = 1000;
    station.setLinkUp(true);
    station.tick(3);
    QVERIFY(!State.fileInProgress);
    station.tick();
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, QStringLiteral("20260731u001.260731_120003"));
    QCOMPARE(station.desk.sent(), Marked);
}

void TestFormMainDispatch::directRowWaitsWhileAFileIsInProgress()
{
    Station station(Direct);
    readyToSend(station);
    State.fileInProgress = true;
    station.tick(3);
    QVERIFY(station.desk.sent().isEmpty());
    State.fileInProgress = false;
    station.tick();
    QCOMPARE(station.desk.sent(), Marked);
}

void TestFormMainDispatch::directRowWaitsForAnEmptySendBuffer()
{
    Station station(Direct);
    readyToSend(station);
    TlgThread.sendBuffer.mAppend(QStringLiteral("А"));
    station.tick();
    QVERIFY(!State.fileInProgress);
    QCOMPARE(station.desk.sent(), QStringLiteral("А"));
    station.tick();
    QVERIFY(State.fileInProgress);
}

void TestFormMainDispatch::directRowWaitsUntilTheLinkHasSentAll()
{
    Station station(Direct);
    readyToSend(station);
    TlgThread.allSent = false;
    station.tick();
    QVERIFY(!State.fileInProgress);
    TlgThread.allSent = true;
    station.tick();
    QVERIFY(State.fileInProgress);
}

void TestFormMainDispatch::processMode3SelectsNoneOfTheThreeProcedures()
{
    Station station(Direct);
    readyToSend(station);
    Options.processMode = 3;
    TlgThread.recvBuffer.mAppend(Marked + QStringLiteral("\r\n"));
    station.form->slotOnTlgReceived();
    station.tick(3);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(station.desk.sent(), QString());
    QCOMPARE(State.PK_in, 0);
    QVERIFY(ProcessCKS.receiveBuffer.isEmpty());
    QVERIFY(ProcessSKK.receiveBuffer.isEmpty());
    QVERIFY(ProcessDirect.receiveBuffer.isEmpty());
}

void TestFormMainDispatch::emptyQueueSendsNothing()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        station.setLinkUp(true);
        State.tlgMode = 3;
        State.secondsSinceRx = 100;
        State.scanCountdown = 1000;
        station.tick(5);
        QVERIFY(!State.fileInProgress);
    }
}

void TestFormMainDispatch::fileFoundByTheScanGoesInTheSameTick()
{
    Station station(Direct);
    station.setLinkUp(true);
    State.scanCountdown = 0;
    station.queueDirect(QStringLiteral("260731_110000"), Marked.toUtf8());
    station.tick();
    QVERIFY(State.fileInProgress);
    QCOMPARE(station.desk.sent(), Marked);
}

void TestFormMainDispatch::nothingIsDispatchedUnderAnotherDispatch()
{
    Station station(Direct);
    readyToSend(station);
    station.form->dispatching = true; // the procedure asks the operator something, and the tick goes on
    station.tick(2);
    QVERIFY(!State.fileInProgress);
    station.form->dispatching = false;
    station.tick();
    QVERIFY(State.fileInProgress);
    QVERIFY(!station.form->dispatching);
}

void TestFormMainDispatch::centreRowGoesAfterFourQuietSeconds()
{
    Station station(CKS);
    readyForCentre(station);
    State.secondsSinceRx = 2; // the tick raises it first
    station.tick();
    QCOMPARE(State.secondsSinceRx, 3);
    QVERIFY(!State.fileInProgress);
    station.tick();
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, QStringLiteral("20260731u001"));
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЦЗЦ 001 ПРИВЕТ НННН  "));
}

void TestFormMainDispatch::centreRowWaits_data()
{
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<bool>("inProgress");
    QTest::addColumn<bool>("quietTime");
    QTest::addColumn<QString>("number");
    row("mode 0", 0, false, false, "");
    row("mode 2", 2, false, false, "");
    row("mode 4", 4, false, false, "");
    row("mode 5", 5, false, false, "");
    row("file in progress", 3, true, false, "");
    row("quiet time", 3, false, true, "");
    row("row of a subscriber", 3, false, false, "1234");
}

void TestFormMainDispatch::centreRowWaits()
{
    QFETCH(int, tlgMode);
    QFETCH(bool, inProgress);
    QFETCH(bool, quietTime);
    QFETCH(QString, number);
    Station station(CKS);
    readyForCentre(station);
    station.form->modelSend.at(0).number = number;
    State.tlgMode = tlgMode;
    State.fileInProgress = inProgress;
    State.dayChangeQuiet = quietTime;
    Time.setTo(QDateTime(QDate(2026, 7, 31), quietTime ? QTime(23, 57) : QTime(12, 0)));
    State.secondsSinceRx = 10;
    station.tick(2);
    QVERIFY(State.currentFile.isEmpty());
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainDispatch::receiptIsDueEachThirtiethSecondInModeBA_data()
{
    QTest::addColumn<int>("secondsBefore"); // tlgModeSeconds before the tick, which raises it
    QTest::addColumn<bool>("due");
    row("28", 28, false);
    row("29", 29, true);
    row("30", 30, false);
    row("59", 59, true);
    row("86399", 86399, true);
}

void TestFormMainDispatch::receiptIsDueEachThirtiethSecondInModeBA()
{
    QFETCH(int, secondsBefore);
    Station station(CKS);
    station.setLinkUp(true);
    State.tlgMode = 2;
    State.tlgModeSeconds = secondsBefore;
    station.tick();
    QFETCH(bool, due);
    QCOMPARE(State.sendReceiptCountdown, due ? 1 : 0);
    QCOMPARE(State.askReceiptCountdown, 0);
}

void TestFormMainDispatch::requestIsDueEachSixtiethSecondInModeNone_data()
{
    QTest::addColumn<int>("secondsBefore");
    QTest::addColumn<bool>("due");
    row("29", 29, false);
    row("58", 58, false);
    row("59", 59, true);
    row("60", 60, false);
    row("119", 119, true);
}

void TestFormMainDispatch::requestIsDueEachSixtiethSecondInModeNone()
{
    QFETCH(int, secondsBefore);
    Station station(CKS);
    station.setLinkUp(true);
    State.tlgModeSeconds = secondsBefore;
    station.tick();
    QFETCH(bool, due);
    QCOMPARE(State.askReceiptCountdown, due ? 1 : 0);
    QCOMPARE(State.sendReceiptCountdown, 0);
}

void TestFormMainDispatch::silentDayLeavesThePeriodAsItIs_data()
{
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("asked");
    row("no mode", 0, 60, "|ЗЗ ");
    row("mode BA", 2, 30, "|ЗЦЗЦ КС ВАШ 000=000 НННН  ");
    row("mode BD", 1, 0, "");
}

/// From five minutes before the age of the mode stands still to five minutes behind.
void TestFormMainDispatch::silentDayLeavesThePeriodAsItIs()
{
    QFETCH(int, period);
    QFETCH(QString, asked);
    Station station(CKS);
    station.setLinkUp(true);
    QFETCH(int, tlgMode);
    State.tlgMode = tlgMode;
    State.tlgModeSeconds = 86400 - 301;
    State.scanCountdown = 1000;
    State.secondsSinceRx = 86400;
    (void)station.news();
    station.tick();
    QString line;
    for (int age = 86400 - 299; age <= 86400 + 300; ++age) {
        station.tick();
        const QString sent = station.desk.sent();
        // Due at the full period, on the line with the next tick.
        const bool due = period != 0 && age % period == 1;
        QCOMPARE(sent, due ? asked : QString());
        if (!sent.isEmpty())
            station.reportSent(sent);
        line += sent;
        QCOMPARE(State.tlgModeSeconds, qMin(age, 86400));
    }
    QCOMPARE(line, asked.repeated(period == 0 ? 0 : 600 / period));
    QCOMPARE(station.news(), line.isEmpty() ? QStringList() : QStringList{QLatin1Char('2') + line});
}

void TestFormMainDispatch::newModeEndsThePeriodOfTheOld()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.scanCountdown = 1000;
    State.secondsSinceRx = 86400;
    State.tlgModeSeconds = 86400;
    station.tick(47);
    State.setTlgMode(2);
    QString ticks;
    for (int i = 1; i <= 62; ++i) {
        station.tick();
        if (!station.desk.sent().isEmpty())
            ticks += QString::number(i) + QLatin1Char(' ');
    }
    QCOMPARE(ticks, QStringLiteral("31 61 "));
}

void TestFormMainDispatch::periodicTrafficNeedsAutomaticModeAndLink()
{
    Station station(CKS);
    State.tlgModeSeconds = 59;
    station.tick(); // the link is down
    QCOMPARE(State.askReceiptCountdown, 0);
    station.setLinkUp(true);
    State.manualMode = true;
    State.tlgModeSeconds = 59;
    station.tick();
    QCOMPARE(State.askReceiptCountdown, 0);
}

void TestFormMainDispatch::periodicTrafficRestsInTheQuietTime()
{
    Station station(CKS);
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 57)));
    station.setLinkUp(true);
    State.dayChangeQuiet = true;
    State.tlgModeSeconds = 59;
    station.tick();
    QCOMPARE(State.askReceiptCountdown, 0);
    State.tlgMode = 2;
    State.tlgModeSeconds = 59;
    station.tick();
    QCOMPARE(State.sendReceiptCountdown, 0);
}

QTEST_MAIN(TestFormMainDispatch)
#include "test_form_main_dispatch.moc"
