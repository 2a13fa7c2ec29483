#include "app/clock.h"
#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/app/run/note_program.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/support/thread_end.h"
#include "ui/form_main.h"

#include <QThread>
#include <QtTest>

#include <atomic>

/// What follows the event loop.
class TestShutdown : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_formerSleep = sleepSeconds; }
    void init();
    void cleanupTestCase() { sleepSeconds = m_formerSleep; }

    void threadsAreToldToStopAndGivenASecond();
    void runningLinkThreadEndsByItsFlag();
    void deafThreadGetsAnotherSecond();
    void countersAndOptionsAreSaved();
    void journalEndsWithItsTwoLines();
    void journalFileIsWrittenAnew();
    void stopRequestIsAnsweredOnlyWithCheckStopFile_data();
    void stopRequestIsAnsweredOnlyWithCheckStopFile();
    void restartPassesNoArguments();
    void noRestartUnlessAsked();
    void windowIsGone();

private:
    QList<unsigned long> m_slept;
    std::function<void(unsigned long)> m_formerSleep;
};

namespace
{
/// A thread that hears no stop flag until it is allowed to.
class DeafThread : public QThread
{
public:
    std::atomic<bool> hears = false;

private:
    void run() override
    {
        while (!hears)
            msleep(1);
    }
};
} // namespace

void TestShutdown::init()
{
    m_slept.clear();
    sleepSeconds = [this](unsigned long seconds) { m_slept << seconds; };
}

void TestShutdown::threadsAreToldToStopAndGivenASecond()
{
    const Desk desk;
    TlgThread.stopRequested = PrfThread.stopRequested = false;
    shutDown(QString());
    QVERIFY(TlgThread.stopRequested);
    QVERIFY(PrfThread.stopRequested);
    QCOMPARE(m_slept, QList<unsigned long>({1}));
}

void TestShutdown::runningLinkThreadEndsByItsFlag()
{
    const Desk desk;
    sleepSeconds = [this](unsigned long seconds) {
        m_slept << seconds;
        TlgThread.wait(5000); // stands for the second
    };
    ThreadEnd linkEnd(TlgThread);
    TlgThread.setTcp(QStringLiteral("127.0.0.1"), 1, false);
    TlgThread.shownWindow = 5;
    TlgThread.start();
    QTRY_COMPARE(TlgThread.shownWindow.load(), -1); // its loop has begun
    shutDown(QString());
    QCOMPARE(m_slept, QList<unsigned long>({1}));
    QVERIFY(TlgThread.isFinished() && linkEnd.ended());
}

void TestShutdown::deafThreadGetsAnotherSecond()
{
    DeafThread thread;
    ThreadEnd end(thread);
    waitIfRunning(thread);
    QVERIFY(m_slept.isEmpty()); // not running

    thread.start();
    waitIfRunning(thread);
    QCOMPARE(m_slept, QList<unsigned long>({1}));
    QVERIFY(thread.isRunning());
    thread.hears = true;
    QVERIFY(end.join(30000));
}

void TestShutdown::countersAndOptionsAreSaved()
{
    const Desk desk;
    State.PK_out = 321;
    Options.mainTitle = QStringLiteral("title");
    shutDown(QString());
    QVERIFY(desk.readText("velda_state.ini").contains("\nPK_out=321\n"));
    QVERIFY(desk.readText("velda.ini").contains("\nmainTitle=title\n"));
}

void TestShutdown::journalEndsWithItsTwoLines()
{
    const Desk desk(QTime(12, 0, 5));
    Log.addServiceString(QStringLiteral("12:00:00 Запуск"), ProtocolInfo);
    shutDown(QString());
    QCOMPARE(desk.read("prt/20260731.prt"),
             QStringLiteral("\u000312:00:00 Запуск\n\u000312:00:05 Выход\n\u000312:00:05 \n").toUtf8());
}

void TestShutdown::journalFileIsWrittenAnew()
{
    const Desk desk(QTime(12, 0, 5));
    Options.protocolFileNoClose = true;
    Log.addServiceString(QStringLiteral("12:00:00 Запуск"), ProtocolInfo);
    Log.flushRequested = true;
    Log.Save();
    QFile damaged(desk.path("prt/20260731.prt"));
    QVERIFY(damaged.open(QIODevice::ReadWrite));
    damaged.write("XXXX"); // over the head that a plain append would leave as it is
    damaged.close();
    shutDown(QString());
    QCOMPARE(desk.read("prt/20260731.prt"),
             QStringLiteral("\u000312:00:00 Запуск\n\u000312:00:05 Выход\n\u000312:00:05 \n").toUtf8());
    QVERIFY(!Log.rewriteAll);
}

void TestShutdown::stopRequestIsAnsweredOnlyWithCheckStopFile_data()
{
    QTest::addColumn<bool>("checkStopFile");
    row("on", true);
    row("off", false);
}

void TestShutdown::stopRequestIsAnsweredOnlyWithCheckStopFile()
{
    QFETCH(bool, checkStopFile);
    const Desk desk;
    Options.checkStopFile = checkStopFile;
    desk.write("velda.unlck", "");
    shutDown(QString());
    QCOMPARE(QFile::exists(desk.path("velda.unlck")), !checkStopFile);
}

void TestShutdown::restartPassesNoArguments()
{
    const Desk desk;
    State.restartAfterExit = true;
    shutDown(noteProgram(desk));
    QTRY_VERIFY(QFile::exists(desk.path("note.txt")));
    QCOMPARE(desk.readText("note.txt"), QByteArray("none\n"));
}

void TestShutdown::noRestartUnlessAsked()
{
    const Desk desk;
    const QString program = noteProgram(desk);
    shutDown(program);
    QProcess later; // started after the other would have been
    later.start(program, {"one"});
    QVERIFY(later.waitForFinished());
    QCOMPARE(desk.readText("note.txt"), QByteArray("one\n"));
}

void TestShutdown::windowIsGone()
{
    const Desk desk;
    Options.Load();
    mainWindow = new FormMain;
    const QPointer<FormMain> window = mainWindow;
    shutDown(QString());
    QVERIFY(window.isNull());
    QVERIFY(!mainWindow);
}

QTEST_MAIN(TestShutdown)
#include "test_shutdown.moc"
