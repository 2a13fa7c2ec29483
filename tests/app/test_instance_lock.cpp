#include "app/ask.h"
#include "app/options.h"
#include "app/startup.h"
#include "tests/support/desk.h"

#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include <numeric>
#include <unistd.h>

/// The instance lock, and what a refused one leads to. The other instance is a second lock on the file; its
/// answers are given while the new instance would sleep.
class TestInstanceLock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void freeLockIsTakenWithoutAWord();
    void secondStartWarnsAfterOneSecond();
    void lockOfADeadProcessIsTaken();
    void refusalNamesItsReason_data();
    void refusalNamesItsReason();
    void directoryWithoutTheFileIsAnUnknownError();
    void otherErrorsWarnWithCheckStopFileToo();

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
    void unwritableDirectoryIsNamed();

    void warningIsAPlainBox();
    void questionHasYesAndNoWithoutDefault();

private:
    QStringList m_asked;
    QStringList m_warned;
    QList<unsigned long> m_slept;
    QList<int> m_answers;
    std::function<int(QWidget *, const QString &, const QString &)> m_formerAsk;
    std::function<void(const QString &)> m_formerWarn;
    std::function<void(unsigned long)> m_formerSleep;
};

namespace
{
const QString AlreadyRunning = QStringLiteral("Приложение Velda уже запущено.\n"
                                              "Разрешено запускать только один экземпляр приложения.");
const QString StopQuestion =
    QStringLiteral("Velda: Приложение уже запущено. Остановить предыдущий экземпляр?");

bool requestExists()
{
    return QFile::exists(QStringLiteral("velda.unlck"));
}
} // namespace

void TestInstanceLock::initTestCase()
{
    m_formerAsk = askHandler;
    m_formerWarn = warnHandler;
    m_formerSleep = sleepSeconds;
}

void TestInstanceLock::init()
{
    m_asked.clear();
    m_warned.clear();
    m_slept.clear();
    m_answers.clear();
    askHandler = [this](QWidget *parent, const QString &title, const QString &text) {
        m_asked << title + ": " + text + (parent ? " with a parent" : "");
        return m_answers.isEmpty() ? int(QMessageBox::No) : m_answers.takeFirst();
    };
    warnHandler = [this](const QString &text) { m_warned << text; };
    sleepSeconds = [this](unsigned long seconds) { m_slept << seconds; };
}

void TestInstanceLock::cleanupTestCase()
{
    askHandler = m_formerAsk;
    warnHandler = m_formerWarn;
    sleepSeconds = m_formerSleep;
}

void TestInstanceLock::freeLockIsTakenWithoutAWord()
{
    const Desk desk;
    QLockFile lock(lockFileName);
    QVERIFY(takeInstanceLock(lock));
    QVERIFY(lock.isLocked());
    QVERIFY(QFile::exists(desk.path("velda.lck")));
    QVERIFY(m_asked.isEmpty() && m_warned.isEmpty());
}

void TestInstanceLock::secondStartWarnsAfterOneSecond()
{
    const Desk desk;
    QLockFile other(lockFileName);
    QVERIFY(other.lock());
    QLockFile lock(lockFileName);
    QElapsedTimer waited;
    waited.start();
    QVERIFY(!takeInstanceLock(lock));
    QVERIFY(waited.elapsed() >= 1000);
    QCOMPARE(m_warned, QStringList(AlreadyRunning));
    QVERIFY(m_asked.isEmpty() && !requestExists());
}

void TestInstanceLock::lockOfADeadProcessIsTaken()
{
    const Desk desk;
    desk.write("velda.lck", "999999999\nvelda\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    QLockFile lock(lockFileName);
    QVERIFY(takeInstanceLock(lock));
    QVERIFY(lock.isLocked());
    QVERIFY(m_warned.isEmpty());
}

void TestInstanceLock::refusalNamesItsReason_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::newRow("held") << int(QLockFile::LockFailedError) << AlreadyRunning;
    QTest::newRow("none") << int(QLockFile::NoError) << "Блокировка файла velda.lck произведена\n";
    QTest::newRow("permission") << int(QLockFile::PermissionError)
                                << "Нет прав записи в каталог /data %1/.\n";
    QTest::newRow("unknown") << int(QLockFile::UnknownError) << "Ошибка создания файла velda.lck\n";
}

void TestInstanceLock::refusalNamesItsReason()
{
    QFETCH(int, error);
    const Desk desk;
    Options.appPath = QStringLiteral("/data %1/");
    QTEST(lockRefusal(QLockFile::LockError(error)), "text");
}

void TestInstanceLock::directoryWithoutTheFileIsAnUnknownError()
{
    const Desk desk;
    QLockFile lock(desk.path("none/velda.lck"));
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_warned, QStringList("Ошибка создания файла velda.lck\n"));
}

void TestInstanceLock::otherErrorsWarnWithCheckStopFileToo()
{
    const Desk desk;
    Options.checkStopFile = true;
    QLockFile lock(desk.path("none/velda.lck"));
    QVERIFY(!takeInstanceLock(lock));
    QCOMPARE(m_warned, QStringList("Ошибка создания файла velda.lck\n"));
    QVERIFY(m_asked.isEmpty() && m_slept.isEmpty());
}

void TestInstanceLock::refusedStopEndsTheProgram_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("No") << int(QMessageBox::No);
    QTest::newRow("Esc") << int(QMessageBox::Escape);
    QTest::newRow("closed") << 0;
}

void TestInstanceLock::refusedStopEndsTheProgram()
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
    QVERIFY(m_warned.isEmpty() && m_slept.isEmpty() && !requestExists());
}

void TestInstanceLock::stopRequestIsAnEmptyFile()
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

void TestInstanceLock::takenRequestLetsTheStartGoOn()
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

void TestInstanceLock::requestIsLookedAtNineTimes()
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

void TestInstanceLock::questionIsRepeatedEvery18Seconds()
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

void TestInstanceLock::requestTakenAtTheLastMomentCounts()
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

void TestInstanceLock::oldRequestIsRemovedBeforeTheQuestion()
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

void TestInstanceLock::lockIsNotTriedAgain()
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

void TestInstanceLock::requestThatCannotBeLeftIsNotTaken()
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

void TestInstanceLock::unwritableDirectoryIsNamed()
{
    const Desk desk;
    const QString closed = desk.path("closed");
    QVERIFY(QDir().mkdir(closed));
    Options.appPath = closed + '/';
    QVERIFY(QFile::setPermissions(closed,
                                  QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
    QFile::setPermissions(desk.path(), QFile::permissions(desk.path()) | QFile::ExeOther);
    QLockFile lock(closed + "/velda.lck");
    const uid_t root = geteuid();
    if (root == 0) // who may write everywhere
        QCOMPARE(seteuid(65534), 0);
    const bool taken = takeInstanceLock(lock);
    if (root == 0)
        QCOMPARE(seteuid(0), 0);
    QVERIFY(!taken);
    QCOMPARE(m_warned, QStringList("Нет прав записи в каталог " + closed + "/.\n"));
}

void TestInstanceLock::warningIsAPlainBox()
{
    QStringList seen;
    QTimer::singleShot(0, [&seen] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        seen << box->text() << (box->parent() ? "parent" : "no parent")
             << (box->icon() == QMessageBox::Warning ? "warning" : "other icon")
             << QString::number(box->standardButtons() == QMessageBox::Ok);
        QTest::keyClick(box, Qt::Key_Return);
    });
    m_formerWarn(QStringLiteral("текст"));
    QCOMPARE(seen, QStringList({"текст", "no parent", "warning", "1"}));
}

void TestInstanceLock::questionHasYesAndNoWithoutDefault()
{
    for (const int answer : {QMessageBox::Yes, QMessageBox::No}) {
        QStringList seen;
        QTimer::singleShot(0, [&seen, answer] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            seen << box->windowTitle() << box->text()
                 << QString::number(box->standardButtons() == (QMessageBox::Yes | QMessageBox::No))
                 << (box->defaultButton() ? "default" : "no default");
            box->button(QMessageBox::StandardButton(answer))->click();
        });
        QCOMPARE(m_formerAsk(nullptr, QStringLiteral("Velda"), QStringLiteral("Остановить?")), answer);
        QCOMPARE(seen, QStringList({"Velda", "Остановить?", "1", "no default"}));
    }
}

QTEST_MAIN(TestInstanceLock)
#include "test_instance_lock.moc"
