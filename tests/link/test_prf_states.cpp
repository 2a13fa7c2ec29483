// The perforator's connection from state to state.

#include "tests/link/prf_adapter.h"
#include "tests/support/row.h"

#include <QDir>

#include <atomic>
#include <termios.h>

class TestPrfStates : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("VELDA_PORTS"); }
    void pausedThreadLeavesThePortFree();
    void pauseIsEnded_data();
    void pauseIsEnded();
    void connectionIsGivenUp_data();
    void connectionIsGivenUp();
    void connectionIsOverWhenItsEndIsTold();
    void pauseThatMeetsAConnectingIsNotLost();
    void portRunsAt9600Baud();
    void autodetectionNamesTheAdapterThatItTook();
    void restartTakesThePortAnew();
    void restartTakesTheNewSpeed();
    void deactivateKeepsThePortUntilTheTextIsGone();
    void restartWaitsUntilTheTextIsGone();
    void clearedTextLetsADeactivatedPortGo();
    void stopDoesNotWaitForText();
    void stopEndsAWaitingThread();
};

namespace
{
using Call = void (CPrfThread::*)();

QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// Gets \a settings of the port, by the descriptor with which this process has it open.
bool settingsOf(const QString &port, termios &settings)
{
    for (const QFileInfo &one : QDir(qs("/proc/self/fd")).entryInfoList(QDir::AllEntries | QDir::System))
        if (one.symLinkTarget() == port)
            return ::tcgetattr(one.fileName().toInt(), &settings) == 0;
    return false;
}
} // namespace
Q_DECLARE_METATYPE(Call)

void TestPrfStates::pausedThreadLeavesThePortFree()
{
    PrfAdapter adapter;
    PrfRun run;
    run.start();
    run.thread.Deactivate();
    QTRY_COMPARE(adapter.closings, adapter.openings);
    QVERIFY(!run.thread.connected);
    run.thread.stopThread();
    QVERIFY(run.join());
}

void TestPrfStates::pauseIsEnded_data()
{
    QTest::addColumn<Call>("call");
    row("Activate", Call(&CPrfThread::Activate));
    row("restartThread", Call(&CPrfThread::restartThread));
    row("setSorel", Call(nullptr));
}

void TestPrfStates::pauseIsEnded()
{
    QFETCH(const Call, call);
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Deactivate();
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
    QTRY_VERIFY(!adapter.terminal.isOpen());
    run.thread.reconnectDelay = 60;
    if (call)
        (run.thread.*call)();
    else
        QVERIFY(run.thread.setSorel(qs("20000001"), 0, false));
    QTRY_VERIFY(run.thread.connected);
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QCOMPARE(run.states().mid(2), QStringList(PrfState::Connected));
}

void TestPrfStates::connectionIsGivenUp_data()
{
    QTest::addColumn<Call>("call");
    row("Deactivate", Call(&CPrfThread::Deactivate));
    row("pauseThread", Call(&CPrfThread::pauseThread));
}

void TestPrfStates::connectionIsGivenUp()
{
    QFETCH(const Call, call);
    PrfAdapter adapter;
    PrfRun run(adapter);
    QVERIFY(run.thread.connected && run.thread.adapterFound);
    (run.thread.*call)();
    QTRY_COMPARE(adapter.closings, 1);
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
    QVERIFY(!run.thread.connected && run.thread.adapterFound);
    QCOMPARE(adapter.openings, 1);
}

// Who is told looks at the flag.
void TestPrfStates::connectionIsOverWhenItsEndIsTold()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    std::atomic<int> told = -1;
    connect(
        &run.thread, &CPrfThread::signalOnState, &run.thread, [&] { told = run.thread.connected ? 1 : 0; },
        Qt::DirectConnection);
    run.thread.Deactivate();
    QTRY_COMPARE(told.load(), 0);
    run.thread.Activate();
    QTRY_COMPARE(told.load(), 1);
}

// The thread may forget the restart that comes with a pause just behind the operator's asking for it.
void TestPrfStates::pauseThatMeetsAConnectingIsNotLost()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.paused = true;
    QTRY_COMPARE(adapter.closings, 1);
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
}

void TestPrfStates::portRunsAt9600Baud()
{
    PrfAdapter adapter;
    const PrfRun run(adapter);
    termios settings = {};
    QVERIFY(settingsOf(adapter.terminal.portName(), settings));
    QCOMPARE(::cfgetispeed(&settings), speed_t(B9600));
    QCOMPARE(::cfgetospeed(&settings), speed_t(B9600));
    QCOMPARE(settings.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t(CS8));
    QCOMPARE(settings.c_iflag & (IXON | IXOFF), tcflag_t(0));
}

void TestPrfStates::restartTakesThePortAnew()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.restartThread();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting, PrfState::Connected}));
}

void TestPrfStates::restartTakesTheNewSpeed()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    QVERIFY(run.thread.setSorel(qs("20000001"), 4, false));
    QCOMPARE(adapter.take(1), QByteArray("65"));
}

void TestPrfStates::deactivateKeepsThePortUntilTheTextIsGone()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(qs("ABCDEF"));
    run.thread.Deactivate();
    QCOMPARE(adapter.settled(), QByteArray());
    QVERIFY(run.thread.connected);
    adapter.send("25");
    QCOMPARE(adapter.take(5), QByteArray("6103190e09"));
    QCOMPARE(adapter.settled(), QByteArray());
    QVERIFY(run.thread.connected);
    QCOMPARE(run.states(), QStringList(PrfState::Connected));
    adapter.send("25");
    QTRY_COMPARE(adapter.closings, 1);
    QCOMPARE(adapter.news(), QByteArray("61010d"));
    QTRY_COMPARE(run.states().mid(1), QStringList(PrfState::Waiting));
}

void TestPrfStates::restartWaitsUntilTheTextIsGone()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(qs("ABCD"));
    run.thread.restartThread();
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.states(), QStringList(PrfState::Connected));
    adapter.send("25");
    QCOMPARE(adapter.take(6), QByteArray("6103190e09"
                                         "61")); // the last one of the new connection
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting, PrfState::Connected}));
}

void TestPrfStates::clearedTextLetsADeactivatedPortGo()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(qs("ABCD"));
    run.thread.Deactivate();
    QCOMPARE(adapter.settled(), QByteArray());
    QVERIFY(run.thread.connected);
    run.thread.clearSend();
    QTRY_COMPARE(adapter.closings, 1);
    QTRY_VERIFY(!run.thread.connected);
}

void TestPrfStates::stopDoesNotWaitForText()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(qs("ABCD"));
    run.thread.stopThread();
    QVERIFY(run.join());
    QCOMPARE(run.states(), QStringList(PrfState::Connected)); // of an end nothing is shown
    QVERIFY(!run.thread.connected);
    QTRY_COMPARE(adapter.closings, 1);
}

void TestPrfStates::stopEndsAWaitingThread()
{
    PrfRun run;
    run.start();
    run.thread.Activate();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    run.thread.stopThread();
    QVERIFY(run.join());
}

void TestPrfStates::autodetectionNamesTheAdapterThatItTook()
{
    PrfAdapter adapter;
    qputenv("VELDA_PORTS", "10000001=/dev/a;" + qgetenv("VELDA_PORTS"));
    PrfRun run;
    QVERIFY(!run.thread.setSorel(qs("29999999"), 0, true)); // the search here is for this one alone
    run.thread.start();
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states(), QStringList(PrfState::Connected));
}

QTEST_GUILESS_MAIN(TestPrfStates)
#include "test_prf_states.moc"
