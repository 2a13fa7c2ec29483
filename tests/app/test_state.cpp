#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

/// The modes, paths and counters of State, and its change of day.
class TestState : public QObject
{
    Q_OBJECT

private slots:
    void everythingStartsAtZero();

    void wordSetsTheMode_data();
    void wordSetsTheMode();
    void unknownWordLeavesMode0NotThePreviousOne();
    void modeRestartsItsAge();

    void manualModeIsJournalledOnce();
    void automaticModeIsJournalledOnce();
    void setAutomaticWhenAlreadyAutomaticStillAsksForAScan();
    void setAutomaticAsksForAReceipt_data();
    void setAutomaticAsksForAReceipt();
    void modeLineWaitsForTheRunningLine();

    void channelNameIsToldOnlyWhenItDiffers();
    void callDirectionSetsTheMode_data();
    void callDirectionSetsTheMode();
    void sameCallDirectionDoesNothing();

    void pathsAreThoseOfTheOptions();
    void pathsForDates();

    void incOutAt999Gives0();
    void counterRisesAndIsReturned();
};

void TestState::everythingStartsAtZero()
{
    const CState fresh;
    QCOMPARE(fresh.basePointSize, 8);
    const QList<int> numbers = {fresh.tlgMode,
                                fresh.tlgModeSeconds,
                                fresh.PK_in,
                                fresh.PK_out,
                                fresh.prevPK_in,
                                fresh.prevPK_out,
                                fresh.CKS_in,
                                fresh.CKS_out,
                                fresh.prevCKS_in,
                                fresh.prevCKS_out,
                                fresh.SKK_in,
                                fresh.SKK_out,
                                fresh.EditorN,
                                fresh.scanCountdown,
                                fresh.scanFoundCount,
                                fresh.stopCountdown,
                                fresh.askReceiptCountdown,
                                fresh.sendReceiptCountdown,
                                fresh.sendAOCountdown,
                                fresh.idleSeconds,
                                fresh.callState,
                                fresh.AutoModeWaitTimer,
                                fresh.AutoModeState,
                                fresh.AutoModeWaitAA,
                                fresh.hangUpPause,
                                fresh.callDirection,
                                fresh.callNumberResult,
                                fresh.waitTimeAfterCallEstablished,
                                fresh.callResult,
                                fresh.secondsSinceTx,
                                fresh.secondsSinceRx};
    QCOMPARE(numbers.count(0), numbers.size());
    const QList<bool> flags = {fresh.restartAfterExit, fresh.manualMode,   fresh.renumberAnnounced,
                               fresh.askSent,          fresh.ignoreAO,     fresh.fileInProgress,
                               fresh.dayChangeQuiet,   fresh.closeAllowed, fresh.connectionActive};
    QCOMPARE(flags.count(false), flags.size());
    QCOMPARE(fresh.YYYYMMDD + fresh.channelName + fresh.currentFile + fresh.connectionText +
                 fresh.dialledNumber,
             QString());
}

void TestState::wordSetsTheMode_data()
{
    QTest::addColumn<int>("mode");
    row("БА", 2);
    row("ОТКРОЙТЕ", 2);
    row("ОТКРЫТИЯ", 2);
    row("РБ", 3);
    row("ОТКРЫТА", 3);
    row("БД", 1);
    row("ЗАКРЫТА", 1);
    row("БВ", 4);
    row("БР", 5);
    row("рб", 0);
    row("РБ ", 0);
    row("БББ", 0);
    row("", 0);
}

void TestState::wordSetsTheMode()
{
    const Desk desk;
    State.tlgMode = 7;
    State.tlgModeSeconds = 50;
    QSignalSpy told(&State, &CState::tlgModeChanged);
    State.setTlgMode(QString::fromUtf8(QTest::currentDataTag()));
    QTEST(State.tlgMode, "mode");
    QCOMPARE(State.tlgModeSeconds, 0);
    QCOMPARE(told.size(), 1);
}

void TestState::unknownWordLeavesMode0NotThePreviousOne()
{
    const Desk desk;
    State.setTlgMode(QStringLiteral("РБ"));
    State.setTlgMode(QStringLiteral("СВЯЗЬ"));
    QCOMPARE(State.tlgMode, 0);
}

void TestState::modeRestartsItsAge()
{
    const Desk desk;
    State.tlgModeSeconds = 50;
    QSignalSpy told(&State, &CState::tlgModeChanged);
    State.setTlgMode(4);
    QCOMPARE(State.tlgMode, 4);
    QCOMPARE(State.tlgModeSeconds, 0);
    State.tlgModeSeconds = 50;
    State.setTlgMode(4); // the same mode again
    QCOMPARE(State.tlgModeSeconds, 0);
    QCOMPARE(told.size(), 2);
}

void TestState::manualModeIsJournalledOnce()
{
    const Desk desk;
    Log.addServiceString(QStringLiteral("Запуск"), ProtocolInfo);
    QSignalSpy told(&State, &CState::automaticChanged);
    State.askReceiptCountdown = 9;
    State.setAutomatic(false);
    QVERIFY(State.manualMode);
    QCOMPARE(State.scanCountdown, 3);
    State.scanCountdown = 0;
    State.setAutomatic(false);
    QCOMPARE(State.scanCountdown, 3);
    QCOMPARE(State.askReceiptCountdown, 9);
    QCOMPARE(told.size(), 2);
    QCOMPARE(desk.journal(), QStringList({"3Запуск", "312:00:00 Установлен РУЧНОЙ режим", ""}));
}

void TestState::automaticModeIsJournalledOnce()
{
    const Desk desk;
    Log.addServiceString(QStringLiteral("Запуск"), ProtocolInfo);
    State.manualMode = true;
    QSignalSpy told(&State, &CState::automaticChanged);
    State.setAutomatic(true);
    State.setAutomatic(true);
    QVERIFY(!State.manualMode);
    QCOMPARE(told.size(), 2);
    QCOMPARE(desk.journal(), QStringList({"3Запуск", "312:00:00 Установлен АВТОМАТИЧЕСКИЙ режим", ""}));
}

void TestState::setAutomaticWhenAlreadyAutomaticStillAsksForAScan()
{
    const Desk desk;
    Options.processMode = 0;
    State.tlgMode = 2;
    State.setAutomatic(true);
    QCOMPARE(State.scanCountdown, 3);
    QCOMPARE(State.askReceiptCountdown, 3);
    QVERIFY(desk.journal().isEmpty() && Log.cachedText.isEmpty());
}

void TestState::setAutomaticAsksForAReceipt_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<int>("countdown");
    row("centre, no mode", 0, 0, 3);
    row("centre, 5", 0, 5, 3);
    row("centre, open", 0, 3, 0);
    row("switched network", 1, 2, 0);
    row("direct", 2, 2, 0);
    row("none of the three", 3, 2, 0);
}

void TestState::setAutomaticAsksForAReceipt()
{
    QFETCH(int, processMode);
    QFETCH(int, tlgMode);
    const Desk desk;
    Options.processMode = processMode;
    State.tlgMode = tlgMode;
    State.manualMode = true;
    State.setAutomatic(true);
    QTEST(State.askReceiptCountdown, "countdown");
}

void TestState::modeLineWaitsForTheRunningLine()
{
    const Desk desk;
    Log.add(QStringLiteral("АБВ"), ProtocolReceived);
    State.setAutomatic(false);
    QCOMPARE(desk.journal(), QStringList("1АБВ"));
    Log.add(QStringLiteral("\r\n"), ProtocolReceived);
    QCOMPARE(desk.journal(), QStringList({"1АБВ<>", "312:00:00 Установлен РУЧНОЙ режим", ""}));
}

void TestState::channelNameIsToldOnlyWhenItDiffers()
{
    const Desk desk;
    QSignalSpy told(&State, &CState::titlesChanged);
    State.setChannelName(QStringLiteral("АБВ001"));
    State.setChannelName(QStringLiteral("АБВ001"));
    QCOMPARE(State.channelName, QStringLiteral("АБВ001"));
    QCOMPARE(told.size(), 1);
    State.setChannelName(QString());
    QCOMPARE(told.size(), 2);
}

void TestState::callDirectionSetsTheMode_data()
{
    QTest::addColumn<int>("former");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("outgoing");
    row("call out", 0, 2, 3, 1);
    row("call in", 0, 1, 2, 0);
    row("end of a call out", 2, 0, 2, 0);
    row("in turned out", 1, 2, 3, 1);
}

void TestState::callDirectionSetsTheMode()
{
    QFETCH(int, former);
    QFETCH(int, direction);
    const Desk desk;
    State.callDirection = former;
    State.tlgModeSeconds = 50;
    QSignalSpy told(&State, &CState::tlgModeChanged);
    State.setCallDirection(direction);
    QCOMPARE(State.callDirection, direction);
    QTEST(State.tlgMode, "mode");
    QTEST(State.SKK_out, "outgoing");
    QCOMPARE(State.SKK_in, 0);
    QCOMPARE(State.tlgModeSeconds, 50);
    QCOMPARE(told.size(), 0);
}

void TestState::sameCallDirectionDoesNothing()
{
    const Desk desk;
    State.callDirection = 2;
    State.tlgMode = 5;
    State.setCallDirection(2);
    QCOMPARE(State.tlgMode, 5);
    QCOMPARE(State.SKK_out, 0);
}

void TestState::pathsAreThoseOfTheOptions()
{
    const Desk desk;
    Options.pathInp = QStringLiteral("a");
    Options.pathOut = QStringLiteral("b");
    Options.pathPrt = QStringLiteral("c");
    QCOMPARE(State.pathInp(), QStringLiteral("a"));
    QCOMPARE(State.pathOut(), QStringLiteral("b"));
    QCOMPARE(State.pathPrt(), QStringLiteral("c"));
    QCOMPARE(State.pathShablons(), QStringLiteral("Шаблоны"));
}

void TestState::pathsForDates()
{
    const Desk desk;
    QCOMPARE(State.pathInp_forDate(QDate(2026, 1, 2)), QDir::toNativeSeparators("inp/20260102"));
    QCOMPARE(State.pathOut_forDate(QDate(2026, 1, 2)), QDir::toNativeSeparators("out/20260102"));
    QCOMPARE(State.pathOut_currentDate(), QDir::toNativeSeparators("out/20260731"));
}

void TestState::incOutAt999Gives0()
{
    const Desk desk;
    State.PK_out = 999;
    QCOMPARE(State.incOut(), 0);
    QCOMPARE(State.PK_out, 0);
    State.PK_in = 999;
    QCOMPARE(State.incInp(), 0);
    QCOMPARE(State.PK_in, 0);
}

void TestState::counterRisesAndIsReturned()
{
    const Desk desk;
    State.PK_in = 4;
    State.PK_out = 998;
    QCOMPARE(State.incInp(), 5);
    QCOMPARE(State.incOut(), 999);
    QCOMPARE(State.PK_in, 5);
    QCOMPARE(State.PK_out, 999);
}

QTEST_MAIN(TestState)
#include "test_state.moc"
