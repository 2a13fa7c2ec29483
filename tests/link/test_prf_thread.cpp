#include "link/prf_thread.h"
#include "tests/link/thread_end.h"
#include "tests/support/desk.h"

#include <QMutex>
#include <QtTest>

class TestPrfThread : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("VELDA_PORTS"); }
    void absentAdapterChangesNoFlag();
    void presentAdapterStartsTheThread();
    void callsSetTheirFlags();
    void activationSaysOnceThatThereIsNoDevice();
    void pausedThreadIdlesAndStops();
    void stoppedThreadStartsAgain();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// The thread with the state texts that it showed.
struct Perforator {
    Perforator()
    {
        QObject::connect(
            &thread, &CPrfThread::signalOnState, &thread,
            [this] {
                const QString text = thread.state();
                const QMutexLocker lock(&mutex);
                shown << text;
            },
            Qt::DirectConnection);
    }
    ~Perforator()
    {
        thread.stopThread();
        end.join();
    }
    QStringList states() const
    {
        const QMutexLocker lock(&mutex);
        return shown;
    }
    CPrfThread thread;
    ThreadEnd end{thread};

private:
    mutable QMutex mutex;
    QStringList shown;
};
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

void TestPrfThread::activationSaysOnceThatThereIsNoDevice()
{
    Perforator perforator;
    QVERIFY(!perforator.thread.setSorel(qs("20000001"), 0, false));
    perforator.thread.start(QThread::InheritPriority);
    perforator.thread.Activate();
    QTRY_COMPARE(perforator.states(), QStringList(qs("Sorel (20000001):  Нет устройства")));
    QTRY_VERIFY(perforator.thread.reconnectDelay >= 59);
    QVERIFY(!perforator.thread.connected);
    perforator.thread.Activate(); // cuts the wait; the outage is known
    QTRY_VERIFY(!perforator.thread.restartRequested);
    QTRY_VERIFY(perforator.thread.reconnectDelay >= 59);
    QCOMPARE(perforator.states().size(), 1);
    QVERIFY(!perforator.thread.reportFailure);
}

void TestPrfThread::pausedThreadIdlesAndStops()
{
    Perforator perforator;
    perforator.thread.start(QThread::InheritPriority);
    perforator.thread.Activate();
    perforator.thread.Deactivate();
    QVERIFY(!perforator.end.join(1200));
    QVERIFY(perforator.states().size() <= 1);
    perforator.thread.stopThread();
    QVERIFY(perforator.end.join(2000));
}

void TestPrfThread::stoppedThreadStartsAgain()
{
    Perforator perforator;
    perforator.thread.Activate();
    for (int run = 1; run <= 2; ++run) {
        perforator.thread.reportFailure = true;
        perforator.thread.reconnectDelay = 0;
        perforator.thread.start(QThread::InheritPriority);
        QTRY_COMPARE(perforator.states().size(), run);
        perforator.thread.stopThread();
        QVERIFY(perforator.end.join(2000));
    }
}

QTEST_GUILESS_MAIN(TestPrfThread)
#include "test_prf_thread.moc"
