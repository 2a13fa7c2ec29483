// The perforator's thread as the main thread sees it.

#include "tests/link/prf_adapter.h"

class TestPrfThread : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("VELDA_PORTS"); }
    void absentAdapterChangesNoFlag();
    void presentAdapterStartsTheThread();
    void callsSetTheirFlags();
    void pausedThreadIdlesAndStops();
    void stoppedThreadStartsAgain();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestPrfThread::absentAdapterChangesNoFlag()
{
    CPrfThread thread;
    thread.reconnectDelay = 7;
    QVERIFY(!thread.setSorel(qs("20000001"), 2, true));
    QVERIFY(thread.paused);
    QVERIFY(!thread.restartRequested && !thread.stopRequested);
    QCOMPARE(thread.reconnectDelay.load(), 7);
    QCOMPARE(thread.adapterSN, qs("20000001"));
    QCOMPARE(thread.baudIndex, 2);
    QVERIFY(thread.autodetect);
}

void TestPrfThread::presentAdapterStartsTheThread()
{
    qputenv("VELDA_PORTS", "20000001XY=/dev/a");
    CPrfThread thread;
    thread.reconnectDelay = 7;
    QVERIFY(!thread.setSorel(qs("20000009"), 0, true)); // the search here is for this one alone
    QVERIFY(thread.setSorel(qs("20000001"), 0, false));
    QCOMPARE(thread.portName, qs("/dev/a"));
    QVERIFY(thread.restartRequested && !thread.paused);
    QCOMPARE(thread.reconnectDelay.load(), 0);
}

void TestPrfThread::callsSetTheirFlags()
{
    using Call = void (CPrfThread::*)();
    for (const Call call : {&CPrfThread::restartThread, &CPrfThread::Activate}) {
        CPrfThread thread;
        thread.reconnectDelay = 7;
        (thread.*call)();
        QVERIFY(thread.restartRequested && !thread.paused);
        QCOMPARE(thread.reconnectDelay.load(), 0);
    }
    for (const Call call : {&CPrfThread::pauseThread, &CPrfThread::Deactivate}) {
        CPrfThread thread;
        thread.paused = false;
        (thread.*call)();
        QVERIFY(thread.restartRequested && thread.paused);
    }
    CPrfThread thread;
    thread.slotOnSec();
    QVERIFY(thread.secondTick);
    thread.stopThread();
    QVERIFY(thread.stopRequested);
}

void TestPrfThread::pausedThreadIdlesAndStops()
{
    PrfRun run;
    run.thread.reconnectDelay = 7;
    run.thread.start(QThread::InheritPriority);
    QVERIFY(!run.join(1200));
    QCOMPARE(run.thread.reconnectDelay.load(), 7); // only a wanted connection is waited for
    QCOMPARE(run.states(), QStringList());
    run.thread.Activate();
    run.thread.Deactivate();
    QVERIFY(!run.join(200));
    QVERIFY(run.states().size() <= 1);
    run.thread.stopThread();
    QVERIFY(run.join(2000));
}

void TestPrfThread::stoppedThreadStartsAgain()
{
    PrfRun run;
    run.thread.Activate();
    for (int time = 1; time <= 2; ++time) {
        run.thread.reportFailure = true;
        run.thread.reconnectDelay = 0;
        run.thread.start(QThread::InheritPriority);
        QTRY_COMPARE(run.states().size(), time);
        run.thread.stopThread();
        QVERIFY(run.join(2000));
    }
}

QTEST_GUILESS_MAIN(TestPrfThread)
#include "test_prf_thread.moc"
