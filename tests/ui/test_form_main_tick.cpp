#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/ui/station.h"
#include "ui/form_main.h"
#include "ui/protocol_widget.h"

#include <QtTest>

class TestFormMainTick : public QObject
{
    Q_OBJECT

private slots:
    void firstTickStartsLinkThreadInAutomaticMode();
    void firstTickFollowsStartInManualMode();
    void firstTickAsksCentreForReceiptInFiveSeconds();
    void firstTickStartsPerforatorThreadOnlyIfUsed();
    void secondTickStartsNothing();
    void stopFileIsNeverSeen();
    void linkThreadLearnsOfTheSecond();
    void journalIsAskedToFlush_data();
    void journalIsAskedToFlush();
    void trayShowsModeOfTheChannel_data();
    void trayShowsModeOfTheChannel();
    void trayShowsNothingForModeBV();
    void trafficAnimationGoesRoundItsFivePictures();
    void trafficInTheSecondOfAModeChangeShowsTheAnimation();
    void trayIconIsSetOnlyWhenItChanges();
    void lampsGoOutWithTheNextTick();
    void stripShowsWindowFigureAndClock();
    void countersOfCentreAreShown();
    void countersOfSwitchedChannelAreShown();
    void countersStayBlankOnDirectLink();
    void queueIsScannedWhenTheCountdownHasRunOut();
    void scanTimeoutOutOfRangeScansEachTick();
    void ageOfModeStopsAfterADay();
    void idleHangUpComesAtItsSecond();
    void idleSecondsOfRowZeroCountWithoutConnection();
    void idleSecondsRunOnInOtherProcedures();
};

namespace
{
/// Ends the threads that a first tick has started. A thread that has hardly begun still clears the request.
void stopThreads()
{
    QTRY_VERIFY((TlgThread.stopThread(), !TlgThread.isRunning()));
    QTRY_VERIFY((PrfThread.stopThread(), !PrfThread.isRunning()));
}

int traySetting(const Station &station)
{
    return station.form->prevIconN;
}
} // namespace

void TestFormMainTick::firstTickStartsLinkThreadInAutomaticMode()
{
    Station station(Direct);
    State.manualMode = true;
    station.form->firstStart = true;
    station.tick();
    QVERIFY(TlgThread.isRunning());
    QVERIFY(!PrfThread.isRunning());
    QVERIFY(!State.manualMode);
    QVERIFY(!station.form->firstStart);
    stopThreads();
}

void TestFormMainTick::firstTickFollowsStartInManualMode()
{
    Station station(CKS, [] { Options.startInManualMode = true; });
    station.form->firstStart = true;
    station.tick();
    QVERIFY(State.manualMode);
    QCOMPARE(State.askReceiptCountdown, 5);
    stopThreads();
}

void TestFormMainTick::firstTickAsksCentreForReceiptInFiveSeconds()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        station.form->firstStart = true;
        station.tick();
        QCOMPARE(State.askReceiptCountdown, mode == CKS ? 5 : 0);
        stopThreads();
    }
}

void TestFormMainTick::firstTickStartsPerforatorThreadOnlyIfUsed()
{
    Station station(Direct, [] { Options.usePrf = true; });
    station.form->firstStart = true;
    station.tick();
    QVERIFY(PrfThread.isRunning());
    stopThreads();
}

void TestFormMainTick::secondTickStartsNothing()
{
    Station station(CKS);
    station.tick();
    QVERIFY(!TlgThread.isRunning());
    QCOMPARE(State.askReceiptCountdown, 0);
}

void TestFormMainTick::stopFileIsNeverSeen()
{
    Station station(Direct, [] { Options.checkStopFile = true; });
    station.desk.write(QStringLiteral("velda.unlck"), "");
    (void)station.news();
    station.tick(11);
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(QFile::exists(QStringLiteral("velda.unlck")));
    QVERIFY(station.news().isEmpty());
}

void TestFormMainTick::linkThreadLearnsOfTheSecond()
{
    Station station(Direct);
    TlgThread.secondTick = false;
    station.tick();
    QVERIFY(TlgThread.secondTick);
}

void TestFormMainTick::journalIsAskedToFlush_data()
{
    QTest::addColumn<bool>("noClose");
    QTest::addColumn<int>("cacheTime");
    QTest::addColumn<QString>("asked"); // of six ticks
    QTest::newRow("file closed") << false << 0 << "------";
    QTest::newRow("file closed, cached") << false << 2 << "------";
    QTest::newRow("0") << true << 0 << "++++++";
    QTest::newRow("1") << true << 1 << "++++++";
    QTest::newRow("2") << true << 2 << "-+-+-+";
    QTest::newRow("3") << true << 3 << "--+--+";
    QTest::newRow("negative") << true << -4 << "++++++";
}

void TestFormMainTick::journalIsAskedToFlush()
{
    QFETCH(bool, noClose);
    QFETCH(int, cacheTime);
    Station station(Direct);
    State.scanCountdown = 1000;
    Options.protocolFileNoClose = noClose;
    Options.protocolFileCacheTime = cacheTime;
    QString asked;
    for (int i = 0; i < 6; ++i) {
        Log.flushRequested = false;
        station.tick();
        asked += Log.flushRequested ? QLatin1Char('+') : QLatin1Char('-');
    }
    QTEST(asked, "asked");
}

void TestFormMainTick::trayShowsModeOfTheChannel_data()
{
    QTest::addColumn<bool>("up");
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<int>("index");
    QTest::newRow("no link") << false << 0 << 7;
    QTest::newRow("no link in mode РБ") << false << 3 << 7;
    QTest::newRow("--") << true << 0 << 0;
    QTest::newRow("БД") << true << 1 << 4;
    QTest::newRow("БА") << true << 2 << 3;
    QTest::newRow("РБ") << true << 3 << 5;
    QTest::newRow("БВ") << true << 4 << 6;
    QTest::newRow("БР") << true << 5 << 0;
    QTest::newRow("above") << true << 6 << 0;
    QTest::newRow("below") << true << -1 << 0;
}

void TestFormMainTick::trayShowsModeOfTheChannel()
{
    QFETCH(bool, up);
    QFETCH(int, tlgMode);
    Station station(CKS);
    station.setLinkUp(up);
    State.tlgMode = tlgMode;
    State.secondsSinceTx = State.secondsSinceRx = 1;
    station.tick();
    QTEST(traySetting(station), "index");
}

void TestFormMainTick::trayShowsNothingForModeBV()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.secondsSinceTx = State.secondsSinceRx = 1;
    State.tlgMode = 4;
    station.tick();
    QVERIFY(station.form->trayIcon.icon().isNull());
    State.tlgMode = 3;
    station.tick();
    QVERIFY(!station.form->trayIcon.icon().isNull());
}

void TestFormMainTick::trafficAnimationGoesRoundItsFivePictures()
{
    Station station(Direct);
    State.secondsSinceTx = 1;
    QList<int> indexes;
    for (int i = 0; i < 6; ++i) {
        State.secondsSinceRx = 0;
        station.tick();
        indexes << traySetting(station);
    }
    QCOMPARE(indexes, (QList<int>{9, 10, 11, 12, 8, 9}));
    station.tick(); // nothing came in this second
    QCOMPARE(traySetting(station), 7);
    State.secondsSinceTx = 0;
    station.tick();
    QCOMPARE(traySetting(station), 10);
}

void TestFormMainTick::trafficInTheSecondOfAModeChangeShowsTheAnimation()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.setTlgMode(3);
    State.secondsSinceTx = 5;
    State.secondsSinceRx = 0;
    station.tick();
    QCOMPARE(traySetting(station), 9);
    station.tick();
    QCOMPARE(traySetting(station), 5);
}

void TestFormMainTick::trayIconIsSetOnlyWhenItChanges()
{
    Station station(Direct);
    State.secondsSinceTx = State.secondsSinceRx = 1;
    station.tick();
    const QIcon none;
    station.form->trayIcon.setIcon(none);
    station.tick();
    QVERIFY(station.form->trayIcon.icon().isNull());
}

void TestFormMainTick::lampsGoOutWithTheNextTick()
{
    Station station(Direct);
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::black));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
    station.receive(QStringLiteral("А"));
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::white));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
    station.reportSent(QStringLiteral("Б"));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::white));
    station.tick();
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::black));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
}

void TestFormMainTick::stripShowsWindowFigureAndClock()
{
    Station station(Direct);
    station.tick();
    QCOMPARE(station.shown("labelWindow"), QStringLiteral("-1"));
    QCOMPARE(station.shown("labelClock"), QStringLiteral("12:00:01"));
    TlgThread.shownWindow = 30;
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 8)));
    station.tick();
    QCOMPARE(station.shown("labelWindow"), QStringLiteral("30"));
    QCOMPARE(station.shown("labelClock"), QStringLiteral("23:59:09"));
}

void TestFormMainTick::countersOfCentreAreShown()
{
    Station station(CKS);
    State.CKS_in = 1;
    State.CKS_out = 22;
    State.PK_in = 333;
    State.PK_out = 0;
    State.SKK_in = State.SKK_out = 99;
    station.tick();
    QCOMPARE(station.shown("labelNetIn"), QStringLiteral("001"));
    QCOMPARE(station.shown("labelNetOut"), QStringLiteral("022"));
    QCOMPARE(station.shown("labelPKin"), QStringLiteral("333"));
    QCOMPARE(station.shown("labelPKout"), QStringLiteral("000"));
}

void TestFormMainTick::countersOfSwitchedChannelAreShown()
{
    Station station(SKK);
    State.SKK_in = 4;
    State.SKK_out = 55;
    State.PK_in = 6;
    State.PK_out = 999;
    station.tick();
    QCOMPARE(station.shown("labelNetIn"), QStringLiteral("004"));
    QCOMPARE(station.shown("labelNetOut"), QStringLiteral("055"));
    QCOMPARE(station.shown("labelPKin"), QStringLiteral("006"));
    QCOMPARE(station.shown("labelPKout"), QStringLiteral("999"));
}

void TestFormMainTick::countersStayBlankOnDirectLink()
{
    Station station(Direct);
    State.PK_in = State.PK_out = 7;
    State.askReceiptCountdown = State.sendReceiptCountdown = 3;
    station.setLinkUp(true);
    station.tick(10);
    for (const char *label : {"labelNetIn", "labelNetOut", "labelPKin", "labelPKout"})
        QCOMPARE(station.shown(label), QStringLiteral("---"));
    // No procedure's service timer has run.
    QCOMPARE(State.askReceiptCountdown, 3);
    QCOMPARE(State.sendReceiptCountdown, 3);
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainTick::queueIsScannedWhenTheCountdownHasRunOut()
{
    Station station(Direct, [] { Options.scanDirsTimeout = 30; });
    station.queueDirect(QStringLiteral("260731_110000"), "АБВ");
    State.scanCountdown = 2;
    station.tick();
    QCOMPARE(station.shown("labelScanCountdown"), QStringLiteral("001"));
    station.tick();
    QCOMPARE(station.shown("labelScanCountdown"), QStringLiteral("000"));
    QCOMPARE(station.form->modelSend.rowCount(), 0);
    QCOMPARE(station.shown("labelScanResult"), QStringLiteral("000"));
    station.tick();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
    QCOMPARE(station.shown("labelScanResult"), QStringLiteral("001"));
    QCOMPARE(State.scanCountdown, 30);
    QCOMPARE(station.shown("labelScanCountdown"), QStringLiteral("030"));
    station.tick();
    QCOMPARE(State.scanCountdown, 29);
}

void TestFormMainTick::scanTimeoutOutOfRangeScansEachTick()
{
    Station station(Direct, [] { Options.scanDirsTimeout = -5; });
    State.scanCountdown = 0;
    station.tick();
    QCOMPARE(State.scanCountdown, 0);
    station.queueDirect(QStringLiteral("260731_110000"), "АБВ");
    station.tick();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
}

void TestFormMainTick::ageOfModeStopsAfterADay()
{
    Station station(Direct);
    State.tlgModeSeconds = 86398;
    station.tick();
    QCOMPARE(State.tlgModeSeconds, 86399);
    station.tick();
    QCOMPARE(State.tlgModeSeconds, 86400);
    station.tick();
    QCOMPARE(State.tlgModeSeconds, 86400);
}

void TestFormMainTick::idleHangUpComesAtItsSecond()
{
    Station station(SKK, [] {
        Options.SKKTiming[0].Idle_Time_Before_HangUp = 30;
        Options.SKKTiming[1].Idle_Time_Before_HangUp = 5;
    });
    State.callDirection = 2;
    State.idleSeconds = 28;
    State.scanCountdown = 1000;
    (void)station.news();
    station.tick();
    QCOMPARE(State.idleSeconds, 29);
    QVERIFY(station.news().isEmpty());
    QVERIFY(station.desk.sent().isEmpty());
    station.tick();
    QCOMPARE(State.idleSeconds, 0);
    QVERIFY(station.news().contains(
        QStringLiteral("312:00:02 Исходящий отбой (отсутствие приема/передачи 30 сек)")));
    QVERIFY(station.desk.sent().startsWith(QStringLiteral("@H")));
    station.tick();
    QCOMPARE(State.idleSeconds, 1);
}

void TestFormMainTick::idleSecondsOfRowZeroCountWithoutConnection()
{
    Station station(SKK, [] { Options.SKKTiming[0].Idle_Time_Before_HangUp = 3; });
    State.idleSeconds = 0;
    State.callDirection = 0;
    (void)station.news();
    station.tick(2);
    QCOMPARE(State.idleSeconds, 2);
    station.tick();
    QCOMPARE(State.idleSeconds, 0);
    QVERIFY(station.desk.sent().isEmpty());
    State.idleSeconds = 10; // beyond the second that would end it
    station.tick();
    QCOMPARE(State.idleSeconds, 11);
}

void TestFormMainTick::idleSecondsRunOnInOtherProcedures()
{
    for (const int mode : {CKS, Direct}) {
        Station station(mode, [] { Options.SKKTiming[0].Idle_Time_Before_HangUp = 3; });
        State.idleSeconds = 0;
        station.tick(4);
        QCOMPARE(State.idleSeconds, 4);
    }
}

QTEST_MAIN(TestFormMainTick)
#include "test_form_main_tick.moc"
