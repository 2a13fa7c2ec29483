// The perforator's connection from state to state.

#include "tests/link/prf_adapter.h"

#include <QDir>
#include <QTemporaryDir>

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
    void restartTakesThePortAnew();
    void restartTakesTheNewSpeed();
    void deactivateKeepsThePortUntilTheTextIsGone();
    void restartWaitsUntilTheTextIsGone();
    void clearedTextLetsADeactivatedPortGo();
    void stopDoesNotWaitForText();
    void stopEndsAWaitingThread();
    void absentAdapterIsReportedOnce();
    void waitEndsByTime();
    void restartThatMeetsAFailureIsNotLost();
    void portThatDoesNotOpenIsReportedOnce();
    void nextOutageIsReportedAgain();
    void secondProgramDoesNotGetThePort();
    void unpluggedWhilePaused();
    void unpluggedWhileWaiting();
    void unpluggedWhileConnected();
    void unpluggedWhilePunching();
    void unpluggedWhileReading();
    void serialOfAWrongLengthFindsNoPort_data();
    void serialOfAWrongLengthFindsNoPort();
    void autodetectionNamesTheAdapterThatItTook();
};

namespace
{
using Call = void (CPrfThread::*)();

QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

bool found(const PrfRun &run)
{
    return run.thread.adapterFound;
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
    QTest::newRow("Activate") << Call(&CPrfThread::Activate);
    QTest::newRow("restartThread") << Call(&CPrfThread::restartThread);
    QTest::newRow("setSorel") << Call(nullptr);
}

void TestPrfStates::pauseIsEnded()
{
    QFETCH(const Call, call);
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
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
    QTest::newRow("Deactivate") << Call(&CPrfThread::Deactivate);
    QTest::newRow("pauseThread") << Call(&CPrfThread::pauseThread);
}

void TestPrfStates::connectionIsGivenUp()
{
    QFETCH(const Call, call);
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    QVERIFY(run.thread.connected && found(run));
    (run.thread.*call)();
    QTRY_COMPARE(adapter.closings, 1);
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
    QVERIFY(!run.thread.connected && found(run));
    QCOMPARE(adapter.openings, 1);
}

void TestPrfStates::restartTakesThePortAnew()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    run.thread.restartThread();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting, PrfState::Connected}));
}

void TestPrfStates::restartTakesTheNewSpeed()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    QVERIFY(run.thread.setSorel(qs("20000001"), 4, false));
    QCOMPARE(adapter.take(1), QByteArray("65"));
}

void TestPrfStates::deactivateKeepsThePortUntilTheTextIsGone()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
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
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
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
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
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
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
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

void TestPrfStates::absentAdapterIsReportedOnce()
{
    PrfRun run;
    run.start();
    run.thread.Activate();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    QVERIFY(!run.thread.reportFailure && !found(run) && !run.thread.connected);
    run.thread.Activate();
    QTRY_VERIFY(!run.thread.restartRequested);
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    QCOMPARE(run.states(), QStringList(PrfState::NoDevice));
}

void TestPrfStates::waitEndsByTime()
{
    PrfRun run;
    run.start();
    run.thread.Activate();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    PrfAdapter adapter;
    run.thread.reconnectDelay = 2;
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states(), QStringList({PrfState::NoDevice, PrfState::Connected}));
    QVERIFY(run.thread.reportFailure && found(run));
}

// The thread may set the delay of a failure just behind the operator's clearing it.
void TestPrfStates::restartThatMeetsAFailureIsNotLost()
{
    PrfRun run;
    run.start();
    run.thread.Activate();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    PrfAdapter adapter;
    run.thread.restartRequested = true;
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QCOMPARE(run.thread.reconnectDelay.load(), 0);
}

void TestPrfStates::portThatDoesNotOpenIsReportedOnce()
{
    const QTemporaryDir directory;
    qputenv("VELDA_PORTS", "20000001=" + directory.filePath(qs("absent")).toLocal8Bit());
    PrfRun run;
    run.start();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    QVERIFY(!run.thread.reportFailure && !found(run) && !run.thread.connected);
    const QStringList states = run.states();
    QCOMPARE(states.size(), 1);
    QVERIFY(states[0].startsWith(qs("Sorel (20000001): ")));
    QVERIFY(!states[0].endsWith(qs(": ")));
    QVERIFY(states[0] != PrfState::Connected);
    run.thread.Activate();
    QTRY_VERIFY(!run.thread.restartRequested);
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    QCOMPARE(run.states().size(), 1);
}

void TestPrfStates::nextOutageIsReportedAgain()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    adapter.unplug();
    run.thread.restartThread();
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting, PrfState::NoDevice}));
    QVERIFY(!found(run));
}

void TestPrfStates::secondProgramDoesNotGetThePort()
{
    PrfAdapter adapter;
    PrfRun first;
    QVERIFY(first.connectTo(adapter));
    PrfRun second;
    second.start();
    QTRY_VERIFY(second.thread.reconnectDelay >= 59);
    QVERIFY(!second.thread.connected && !found(second));
    QCOMPARE(second.states().size(), 1);
    QVERIFY(second.states()[0] != PrfState::Connected);
    QCOMPARE(adapter.settled(), QByteArray()); // and disturbs nobody
    first.thread.Deactivate();
    QTRY_COMPARE(adapter.closings, 1);
    second.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
}

void TestPrfStates::unpluggedWhilePaused()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    run.thread.Deactivate();
    QTRY_COMPARE(run.states().size(), 2);
    adapter.unplug();
    run.thread.Activate();
    QTRY_COMPARE(run.states().mid(2), QStringList(PrfState::NoDevice));
    adapter.plug();
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states().mid(3), QStringList(PrfState::Connected));
}

void TestPrfStates::unpluggedWhileWaiting()
{
    PrfAdapter adapter;
    adapter.unplug();
    PrfRun run;
    run.start();
    run.thread.Activate();
    QTRY_COMPARE(run.states(), QStringList(PrfState::NoDevice));
    adapter.plug();
    adapter.unplug();
    QTRY_VERIFY(run.thread.reconnectDelay >= 59);
    run.thread.reconnectDelay = 1;
    QTRY_VERIFY(run.thread.reconnectDelay >= 59); // it has looked again
    QCOMPARE(run.states(), QStringList(PrfState::NoDevice));
}

// Nothing shows that the adapter is gone, until the port is to be taken anew.
void TestPrfStates::unpluggedWhileConnected()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    adapter.unplug();
    adapter.plug();
    QVERIFY(run.thread.connected);
    run.thread.Deactivate();
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states().mid(2), QStringList(PrfState::Connected));
}

void TestPrfStates::unpluggedWhilePunching()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    run.thread.Send(QString(100, QLatin1Char('A')));
    adapter.send("25");
    QCOMPARE(adapter.take(5), QByteArray("6103030303"));
    adapter.unplug();
    adapter.plug();
    run.thread.Deactivate();
    QCOMPARE(adapter.openings, 1);
    QCOMPARE(run.thread.waitingLength(), 96); // this is how it shows
    QVERIFY(run.thread.connected);
    run.thread.clearSend();
    QTRY_VERIFY(!run.thread.connected);
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
}

void TestPrfStates::unpluggedWhileReading()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.connectTo(adapter));
    run.thread.startRead();
    QCOMPARE(adapter.take(1), QByteArray("51"));
    adapter.send("0003");
    QTRY_COMPARE(run.read().join(QString()), qs("|А"));
    adapter.unplug();
    run.thread.stopRead();
    run.thread.Deactivate();
    QTRY_VERIFY(!run.thread.connected);
    QCOMPARE(run.read().join(QString()), qs("|А"));
}

void TestPrfStates::serialOfAWrongLengthFindsNoPort_data()
{
    QTest::addColumn<QString>("serial");
    QTest::newRow("empty") << QString();
    QTest::newRow("1") << qs("2");
    QTest::newRow("7") << qs("2000000");
    QTest::newRow("9") << qs("200000011");
    QTest::newRow("100") << QString(100, QLatin1Char('2'));
}

void TestPrfStates::serialOfAWrongLengthFindsNoPort()
{
    QFETCH(const QString, serial);
    PrfAdapter adapter;
    qputenv("VELDA_PORTS", "2=/dev/a;2000000=/dev/b;200000011=/dev/c;" + qgetenv("VELDA_PORTS"));
    PrfRun run;
    QVERIFY(!run.thread.setSorel(serial, 0, false));
    run.thread.start();
    run.thread.Activate();
    QTRY_COMPARE(run.states(), QStringList(qs("Sorel (%1):  Нет устройства").arg(serial)));
    QCOMPARE(adapter.openings, 0);
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
