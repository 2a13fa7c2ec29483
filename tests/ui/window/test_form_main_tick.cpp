#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

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
    void lastLineOfAQuietNightIsOnTheDisk_data();
    void lastLineOfAQuietNightIsOnTheDisk();
    void fullDiskIsToldOnceForEachOutage();
    void queueIsScannedWhenTheCountdownHasRunOut();
    void scanTimeoutOutOfRangeScansEachTick();
    void ageOfModeStopsAfterADay();
    void idleHangUpComesAtItsSecond();
    void idleHangUpTellsOfAnOutgoingSendAlone_data();
    void idleHangUpTellsOfAnOutgoingSendAlone();
    void idleSecondsOfRowZeroCountInACallToTheCentre();
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
    row("file closed", false, 0, "------");
    row("file closed, cached", false, 2, "------");
    row("0", true, 0, "++++++");
    row("1", true, 1, "++++++");
    row("2", true, 2, "-+-+-+");
    row("3", true, 3, "--+--+");
    row("negative", true, -4, "++++++");
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

void TestFormMainTick::lastLineOfAQuietNightIsOnTheDisk_data()
{
    QTest::addColumn<int>("cacheTime");
    QTest::addColumn<int>("ticks"); // until the journal's turn
    row("each second", 0, 1);
    row("each fifth second", 5, 5);
}

void TestFormMainTick::lastLineOfAQuietNightIsOnTheDisk()
{
    QFETCH(int, cacheTime);
    QFETCH(int, ticks);
    Station station(Direct);
    State.scanCountdown = 1000;
    Options.protocolFileNoClose = true;
    Options.protocolFileCacheTime = cacheTime;
    Log.addServiceString(QStringLiteral("первая"), ProtocolInfo);
    Log.flushRequested = false;
    Log.addServiceString(QStringLiteral("последняя"), ProtocolInfo);
    const auto onDisk = [&station] {
        return station.desk.read(QStringLiteral("prt/20260731.prt")).contains("последняя");
    };
    station.tick(ticks - 1);
    QVERIFY(!onDisk());
    station.tick();
    QVERIFY(onDisk()); // without another line
}

void TestFormMainTick::fullDiskIsToldOnceForEachOutage()
{
    Station station(Direct);
    State.scanCountdown = 1000;
    const auto told = [] { return Log.lines.filter(QStringLiteral("Протокол не записывается на диск: ")); };
    for (int outage = 1; outage <= 2; ++outage) {
        {
            const FullDisk full;
            Log.addServiceString(QStringLiteral("событие"), ProtocolInfo);
            station.tick(3);
            QCOMPARE(told().size(), outage);
            QCOMPARE(told().last().at(0), QChar(ProtocolError));
        }
        station.tick(); // there is room again
        QCOMPARE(station.desk.read(QStringLiteral("prt/20260731.prt")), Log.lines.join('\n').toUtf8());
    }
    station.tick(3);
    QCOMPARE(told().size(), 2);
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
    // The hang-up of the tick, then that of the end of the connection.
    QCOMPARE(station.desk.sent(), QStringLiteral("@H@H"));
    QCOMPARE(State.callDirection, 0);
    station.tick();
    QCOMPARE(State.idleSeconds, 1);
}

void TestFormMainTick::idleHangUpTellsOfAnOutgoingSendAlone_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("debug");
    QTest::addColumn<int>("lines"); // of the state of the send
    row("incoming", 1, false, 0);
    row("incoming, with the debug option", 1, true, 0);
    row("outgoing", 2, false, 0);
    row("outgoing, with the debug option", 2, true, 6);
}

void TestFormMainTick::idleHangUpTellsOfAnOutgoingSendAlone()
{
    QFETCH(int, direction);
    QFETCH(bool, debug);
    QFETCH(int, lines);
    Station station(SKK, [] { Options.SKKTiming[0].Idle_Time_Before_HangUp = 30; });
    Options.debugInfoToProtocol = debug;
    State.callDirection = direction;
    State.idleSeconds = 29;
    State.scanCountdown = 1000;
    (void)station.news();
    station.tick();
    const QStringList news = station.news();
    QCOMPARE(news.filter("Исходящий отбой").size(), 1);
    QCOMPARE(news.filter(QRegularExpression("Receive=|AutoMode|callNumberResult=|waitTimeAfter")).size(),
             lines);
    QCOMPARE(State.callDirection, 0);
}

// The other row is in force then, and its idle time does not act.
void TestFormMainTick::idleSecondsOfRowZeroCountInACallToTheCentre()
{
    Station station(SKK, [] {
        Options.SKKTiming[0].Idle_Time_Before_HangUp = 4;
        Options.SKKTiming[1].Idle_Time_Before_HangUp = 2;
    });
    ProcessSKK.timing = &Options.SKKTiming[1];
    State.callDirection = 2;
    State.idleSeconds = 0;
    station.tick(3);
    QCOMPARE(State.idleSeconds, 3);
    QVERIFY(station.desk.sent().isEmpty());
    station.tick();
    QCOMPARE(State.idleSeconds, 0);
    QCOMPARE(station.desk.sent(), QStringLiteral("@H@H"));
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
