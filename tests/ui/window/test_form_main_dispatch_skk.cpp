#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QtTest>

class TestFormMainDispatchSkk : public QObject
{
    Q_OBJECT

private slots:
    void rowOfASubscriberIsCalled();
    void rowWaits_data();
    void rowWaits();
    void pauseAfterAHangUpHoldsTheRow();
    void endOfAnAutomaticSendHoldsTheNextRow();
    void automaticSendMovesOnlyWhenAllIsSent_data();
    void automaticSendMovesOnlyWhenAllIsSent();
    void manualModeEndsTheAutomaticSend();
    void manualModeWithoutAnAutomaticSendSendsNothing();
};

namespace
{
/// A link that is up, with one row of a subscriber that may be called now.
void readyToCall(Station &station)
{
    station.desk.write(QStringLiteral("out/20260731u001"), "ПРИВЕТ");
    CFileInfo record;
    record.number = QStringLiteral("1234");
    record.trys = 3;
    record.sendTime = Time.dateTime.addSecs(-60);
    QVERIFY(record.Save(station.desk.path(QStringLiteral("out/20260731u001"))));
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
    State.scanCountdown = 1000;
    station.setLinkUp(true);
}
} // namespace

void TestFormMainDispatchSkk::rowOfASubscriberIsCalled()
{
    Station station(SKK);
    readyToCall(station);
    station.tick();
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, QStringLiteral("20260731u001"));
    QCOMPARE(State.AutoModeState, 1);
}

void TestFormMainDispatchSkk::rowWaits_data()
{
    QTest::addColumn<QString>("because");
    row("connection", "connection");
    row("file in progress", "progress");
    row("automatic send", "automatic");
    row("incoming call", "incoming");
    row("row without a number", "number");
    row("link down", "link");
}

void TestFormMainDispatchSkk::rowWaits()
{
    QFETCH(QString, because);
    Station station(SKK);
    readyToCall(station);
    State.connectionActive = because == QLatin1String("connection");
    State.fileInProgress = because == QLatin1String("progress");
    State.AutoModeState = because == QLatin1String("automatic") ? 1 : 0;
    State.callDirection = because == QLatin1String("incoming") ? 1 : 0;
    if (because == QLatin1String("number"))
        station.form->modelSend.at(0).number.clear();
    station.setLinkUp(because != QLatin1String("link"));
    station.tick();
    QVERIFY(State.currentFile.isEmpty());
}

void TestFormMainDispatchSkk::pauseAfterAHangUpHoldsTheRow()
{
    Station station(SKK);
    readyToCall(station);
    State.hangUpPause = 1;
    station.tick();
    QVERIFY(!State.fileInProgress);
    station.tick();
    QVERIFY(State.fileInProgress);
}

void TestFormMainDispatchSkk::endOfAnAutomaticSendHoldsTheNextRow()
{
    Station station(SKK);
    readyToCall(station);
    State.AutoModeState = 17;
    State.AutoModeWaitTimer = 1;
    station.tick(); // hangs up
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(State.hangUpPause, 5);
    QVERIFY(!State.fileInProgress);
    station.tick(5);
    QVERIFY(!State.fileInProgress);
    station.tick();
    QVERIFY(State.fileInProgress);
}

void TestFormMainDispatchSkk::automaticSendMovesOnlyWhenAllIsSent_data()
{
    QTest::addColumn<QString>("buffer");
    QTest::addColumn<bool>("allSent");
    QTest::addColumn<int>("timer"); // 20 before the tick
    row("all sent", "", true, 19);
    row("text in the buffer", "А", true, 20);
    row("far end behind", "", false, 20);
}

void TestFormMainDispatchSkk::automaticSendMovesOnlyWhenAllIsSent()
{
    QFETCH(QString, buffer);
    QFETCH(bool, allSent);
    Station station(SKK);
    station.setLinkUp(true);
    State.AutoModeState = 1;
    State.AutoModeWaitTimer = 20;
    TlgThread.sendBuffer.mAppend(buffer);
    TlgThread.allSent = allSent;
    station.tick();
    QTEST(State.AutoModeWaitTimer, "timer");
}

void TestFormMainDispatchSkk::manualModeEndsTheAutomaticSend()
{
    Station station(SKK);
    readyToCall(station);
    station.tick();
    QCOMPARE(State.AutoModeState, 1);
    State.setAutomatic(false);
    station.tick();
    QCOMPARE(State.AutoModeState, 0);
    QVERIFY(!State.fileInProgress);
}

void TestFormMainDispatchSkk::manualModeWithoutAnAutomaticSendSendsNothing()
{
    Station station(SKK);
    readyToCall(station);
    State.manualMode = true;
    State.hangUpPause = 0;
    station.tick(3);
    QVERIFY(station.desk.sent().isEmpty());
    QCOMPARE(State.hangUpPause, 0);
}

QTEST_MAIN(TestFormMainDispatchSkk)
#include "test_form_main_dispatch_skk.moc"
