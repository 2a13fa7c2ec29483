// The perforator that is not there, or goes away.

#include "tests/link/prf_adapter.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

class TestPrfFailures : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("VELDA_PORTS"); }
    void absentAdapterIsReportedOnce();
    void nextAttemptIsAMinuteAway_data();
    void nextAttemptIsAMinuteAway();
    void waitIsCountedInSeconds();
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
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

bool found(const PrfRun &run)
{
    return run.thread.adapterFound;
}
} // namespace

void TestPrfFailures::absentAdapterIsReportedOnce()
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

void TestPrfFailures::nextAttemptIsAMinuteAway_data()
{
    QTest::addColumn<QByteArray>("ports");
    row("no port", QByteArray());
    row("port that does not open", QByteArray("20000001=/nowhere/absent"));
}

// Another attempt for each look that comes more than a second behind the failure.
void TestPrfFailures::nextAttemptIsAMinuteAway()
{
    QFETCH(const QByteArray, ports);
    qputenv("VELDA_PORTS", ports);
    PrfRun run;
    run.start();
    run.thread.Activate();
    const auto failedJustNow = [&run] {
        const int delay = run.thread.reconnectDelay;
        if (delay > 0 && delay < 60)
            run.thread.Activate();
        return delay == 60;
    };
    QTRY_VERIFY(failedJustNow());
}

void TestPrfFailures::waitIsCountedInSeconds()
{
    PrfRun run;
    run.start();
    QElapsedTimer waited;
    waited.start();
    run.thread.Activate();
    QTRY_VERIFY(run.thread.reconnectDelay > 0);
    QTRY_VERIFY(run.thread.reconnectDelay <= 58);
    QVERIFY(waited.elapsed() >= 2000);
}

void TestPrfFailures::waitEndsByTime()
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
void TestPrfFailures::restartThatMeetsAFailureIsNotLost()
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

void TestPrfFailures::portThatDoesNotOpenIsReportedOnce()
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

void TestPrfFailures::nextOutageIsReportedAgain()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.unplug();
    run.thread.restartThread();
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting, PrfState::NoDevice}));
    QVERIFY(!found(run));
}

void TestPrfFailures::secondProgramDoesNotGetThePort()
{
    PrfAdapter adapter;
    PrfRun first(adapter);
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

void TestPrfFailures::unpluggedWhilePaused()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
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

void TestPrfFailures::unpluggedWhileWaiting()
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
void TestPrfFailures::unpluggedWhileConnected()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.unplug();
    adapter.plug();
    QVERIFY(run.thread.connected);
    run.thread.Deactivate();
    QTRY_COMPARE(run.states(), QStringList({PrfState::Connected, PrfState::Waiting}));
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_COMPARE(run.states().mid(2), QStringList(PrfState::Connected));
}

void TestPrfFailures::unpluggedWhilePunching()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
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

void TestPrfFailures::unpluggedWhileReading()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
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

void TestPrfFailures::serialOfAWrongLengthFindsNoPort_data()
{
    QTest::addColumn<QString>("serial");
    row("empty", QString());
    row("1", qs("2"));
    row("7", qs("2000000"));
    row("9", qs("200000011"));
    row("100", QString(100, QLatin1Char('2')));
}

void TestPrfFailures::serialOfAWrongLengthFindsNoPort()
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

QTEST_GUILESS_MAIN(TestPrfFailures)
#include "test_prf_failures.moc"
