#include "app/ask.h"
#include "app/options.h"
#include "app/startup.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QMessageBox>
#include <QtTest>

#include <numeric>

/// The dialogue of a new instance about the one that holds the lock. The other instance is a second lock on
/// the file; its answers are given while the new instance would sleep.
class TestStopDialogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void refusedStopEndsTheProgram_data();
    void refusedStopEndsTheProgram();
    void stopRequestIsAnEmptyFile();
    void takenRequestLetsTheStartGoOn();
    void requestIsLookedAtNineTimes();
    void questionIsRepeatedEvery18Seconds();
    void requestTakenAtTheLastMomentCounts();
    void oldRequestIsRemovedBeforeTheQuestion();
    void lockIsNotTriedAgain();
    void requestThatCannotBeLeftIsNotTaken();

private:
    QStringList m_asked;
    QList<unsigned long> m_slept;
    QList<int> m_answers; ///< the question's, one after the other; No when they are used up
    std::function<int(QWidget *, const QString &, const QString &)> m_formerAsk;
    std::function<void(unsigned long)> m_formerSleep;
};

namespace
{
const QString StopQuestion =
    QStringLiteral("Velda: Приложение уже запущено. Остановить предыдущий экземпляр?");

bool requestExists()
{
    return QFile::exists(QStringLiteral("velda.unlck"));
}
} // namespace

void TestStopDialogue::initTestCase()
{
    m_formerAsk = askHandler;
    m_formerSleep = sleepSeconds;
}

void TestStopDialogue::init()
{
    m_asked.clear();
    m_slept.clear();
    m_answers.clear();
    askHandler = [this](QWidget *parent, const QString &title, const QString &text) {
        m_asked << title + ": " + text + (parent ? " with a parent" : "");
        return m_answers.isEmpty() ? int(QMessageBox::No) : m_answers.takeFirst();
    };
    warnHandler = [](const QString &text) { QFAIL(qPrintable(text)); };
    sleepSeconds = [this](unsigned long seconds) { m_slept << seconds; };
}

void TestStopDialogue::cleanupTestCase()
{
    askHandler = m_formerAsk;
    sleepSeconds = m_formerSleep;
}

void TestStopDialogue::refusedStopEndsTheProgram_data()
{
    QTest::addColumn<int>("answer");
    row("No", int(QMessageBox::No));
    row("Esc", int(QMessageBox::Escape));
    row("closed", 0);
}

void TestStopDialogue::refusedStopEndsTheProgram()
{
    QFETCH(int, answer);
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {answer};
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_asked, QStringList(StopQuestion));
    QVERIFY(m_slept.isEmpty() && !requestExists());
}

void TestStopDialogue::stopRequestIsAnEmptyFile()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes};
    qint64 size = -1;
    sleepSeconds = [&](unsigned long) {
        size = QFileInfo("velda.unlck").exists() ? QFileInfo("velda.unlck").size() : -1;
        QFile::remove("velda.unlck");
    };
    QVERIFY(takeInstanceLock(lock));
    QCOMPARE(size, qint64(0));
}

void TestStopDialogue::takenRequestLetsTheStartGoOn()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes};
    sleepSeconds = [this](unsigned long seconds) {
        m_slept << seconds;
        if (m_slept.size() == 3)
            QFile::remove("velda.unlck");
    };
    QVERIFY(takeInstanceLock(lock));
    QCOMPARE(m_slept, QList<unsigned long>({2, 2, 2}));
    QCOMPARE(m_asked, QStringList(StopQuestion));
}

void TestStopDialogue::requestIsLookedAtNineTimes()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes, QMessageBox::No};
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_slept, QList<unsigned long>({2, 2, 2, 2, 2, 2, 2, 2, 2}));
    QVERIFY(!requestExists());
}

void TestStopDialogue::questionIsRepeatedEvery18Seconds()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes, QMessageBox::Yes, QMessageBox::Yes, QMessageBox::No};
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_asked, QStringList({StopQuestion, StopQuestion, StopQuestion, StopQuestion}));
    QCOMPARE(std::accumulate(m_slept.begin(), m_slept.end(), 0UL), 3 * 18UL);
}

void TestStopDialogue::requestTakenAtTheLastMomentCounts()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes};
    sleepSeconds = [this](unsigned long seconds) {
        m_slept << seconds;
        if (m_slept.size() == 9)
            QFile::remove("velda.unlck");
    };
    QVERIFY(takeInstanceLock(lock));
    QCOMPARE(m_asked.size(), 1);
}

void TestStopDialogue::oldRequestIsRemovedBeforeTheQuestion()
{
    const Desk desk;
    desk.write("velda.unlck", "old");
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    bool stood = true;
    askHandler = [&](QWidget *, const QString &, const QString &) {
        stood = requestExists();
        return int(QMessageBox::No);
    };
    QVERIFY(!takeInstanceLock(lock));
    QVERIFY(!stood);
}

void TestStopDialogue::lockIsNotTriedAgain()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    m_answers = {QMessageBox::Yes};
    sleepSeconds = [&](unsigned long) {
        other.unlock();
        QFile::remove("velda.unlck");
    };
    QVERIFY(takeInstanceLock(lock));
    QVERIFY(!lock.isLocked());
    QLockFile third(lockFileName); // a further start finds the lock free
    QVERIFY(takeInstanceLock(third));
    QVERIFY(third.isLocked());
}

void TestStopDialogue::requestThatCannotBeLeftIsNotTaken()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile other(desk.path("velda.lck"));
    QVERIFY(other.lock());
    QLockFile lock(desk.path("velda.lck"));
    m_answers = {QMessageBox::Yes, QMessageBox::No};
    desk.write("velda.unlck/in the way", "a directory that no file can replace");
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_asked.size(), 2);
    QVERIFY(m_slept.isEmpty());
}

QTEST_MAIN(TestStopDialogue)
#include "test_stop_dialogue.moc"
