#include "app/clock.h"
#include "app/run/orderly_end.h"
#include "app/state.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QApplication>
#include <QTimer>
#include <QtTest>

#include <csignal>

/// Requests of the operating system to end: what they set going, and that nothing holds them up.
class TestOrderlyEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void requestStartsTheCountdown_data();
    void requestStartsTheCountdown();
    void runningCountdownGoesOn();
    void signalsAreRequests_data();
    void signalsAreRequests();
    void manySignalsAreOneRequest();
    void programIsLeftOnceTheWindowHasClosed();
    void nestedLoopIsLeftToo();
    void tickBeforeTheCloseLeavesNothing();
    void endOfTheSessionWaitsForTheEnd();
    void endOfTheSessionWaitsNoLongerThanTheCountdownTakes();
    void windowThatOnlyHidesDoesNotForbidTheEndOfTheSession();
};

namespace
{
/// The window's tick: one closes it at the countdown's end.
void tick()
{
    if (State.stopCountdown > 0 && --State.stopCountdown == 0)
        State.closeAllowed = true;
    emit Time.signal_1sec();
}
} // namespace

void TestOrderlyEnd::initTestCase()
{
    installOrderlyEnd();
}

void TestOrderlyEnd::requestStartsTheCountdown_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("countdown");
    for (int mode = 0; mode <= 5; ++mode)
        row(qPrintable(QStringLiteral("mode %1").arg(mode)), mode, (mode == 3 ? 5 : 2));
}

void TestOrderlyEnd::requestStartsTheCountdown()
{
    QFETCH(int, mode);
    const Desk desk;
    State.tlgMode = mode;
    requestOrderlyEnd();
    QTEST(State.stopCountdown, "countdown");
    QVERIFY(!State.closeAllowed);
}

void TestOrderlyEnd::runningCountdownGoesOn()
{
    const Desk desk;
    State.tlgMode = 3;
    State.stopCountdown = 1;
    requestOrderlyEnd();
    QCOMPARE(State.stopCountdown, 1);
}

void TestOrderlyEnd::signalsAreRequests_data()
{
    QTest::addColumn<int>("number");
    row("SIGTERM", SIGTERM);
    row("SIGINT", SIGINT);
}

void TestOrderlyEnd::signalsAreRequests()
{
    QFETCH(int, number);
    const Desk desk;
    QCOMPARE(std::raise(number), 0);
    QTRY_COMPARE(State.stopCountdown, 2);
}

void TestOrderlyEnd::manySignalsAreOneRequest()
{
    const Desk desk;
    for (int i = 0; i < 100000; ++i) // more than the pipe holds
        std::raise(SIGTERM);
    QTRY_COMPARE(State.stopCountdown, 2);
    State.stopCountdown = 0;
    QCoreApplication::processEvents();
    QCOMPARE(State.stopCountdown, 0);
}

void TestOrderlyEnd::programIsLeftOnceTheWindowHasClosed()
{
    const Desk desk;
    requestOrderlyEnd();
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, tick);
    ticks.start(1);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(State.closeAllowed);
}

void TestOrderlyEnd::nestedLoopIsLeftToo()
{
    const Desk desk;
    bool dialogReturned = false;
    QTimer::singleShot(0, [&] {
        QEventLoop dialog; // as a question box runs one
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, tick);
        ticks.start(1);
        requestOrderlyEnd();
        dialog.exec();
        dialogReturned = true;
    });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(dialogReturned);
}

void TestOrderlyEnd::tickBeforeTheCloseLeavesNothing()
{
    const Desk desk;
    State.tlgMode = 3;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, [&] {
        ++ticks;
        tick();
    });
    requestOrderlyEnd();
    timer.start(1);
    QApplication::exec();
    QCOMPARE(ticks, 5);
}

void TestOrderlyEnd::endOfTheSessionWaitsForTheEnd()
{
    const Desk desk;
    bool closedWhenItReturned = false;
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, tick);
    QTimer::singleShot(0, [&] {
        ticks.start(1);
        endWithSession();
        closedWhenItReturned = State.closeAllowed;
    });
    QApplication::exec();
    QVERIFY(closedWhenItReturned);
}

void TestOrderlyEnd::endOfTheSessionWaitsNoLongerThanTheCountdownTakes()
{
    const Desk desk;
    QElapsedTimer waited;
    waited.start();
    endWithSession(); // and no tick comes
    QVERIFY(waited.elapsed() >= 5000);
    QVERIFY(waited.elapsed() < 15000);
    QCOMPARE(State.stopCountdown, 2);
}

void TestOrderlyEnd::windowThatOnlyHidesDoesNotForbidTheEndOfTheSession()
{
    QVERIFY(!QGuiApplication::isFallbackSessionManagementEnabled());
}

QTEST_MAIN(TestOrderlyEnd)
#include "test_orderly_end.moc"
