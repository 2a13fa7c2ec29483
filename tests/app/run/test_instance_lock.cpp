#include "app/ask.h"
#include "app/options.h"
#include "app/startup.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

/// The instance lock, and what a refused one leads to. The other instance is a second lock on the file.
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

    void fifoInPlaceOfTheLockIsAnUnknownError();
    void unwritableDirectoryIsNamed();

    void warningIsAPlainBox();
    void questionHasYesAndNoWithoutDefault();

private:
    QStringList m_asked;
    QStringList m_warned;
    QList<unsigned long> m_slept;
    std::function<int(QWidget *, const QString &, const QString &)> m_formerAsk;
    std::function<void(const QString &)> m_formerWarn;
    std::function<void(unsigned long)> m_formerSleep;
};

namespace
{
const QString AlreadyRunning = QStringLiteral("Приложение Velda уже запущено.\n"
                                              "Разрешено запускать только один экземпляр приложения.");

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
    askHandler = [this](QWidget *parent, const QString &title, const QString &text) {
        m_asked << title + ": " + text + (parent ? " with a parent" : "");
        return int(QMessageBox::No);
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
    row("held", int(QLockFile::LockFailedError), AlreadyRunning);
    row("none", int(QLockFile::NoError), "Блокировка файла velda.lck произведена\n");
    row("permission", int(QLockFile::PermissionError), "Нет прав записи в каталог /data %1/.\n");
    row("unknown", int(QLockFile::UnknownError), "Ошибка создания файла velda.lck\n");
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

void TestInstanceLock::fifoInPlaceOfTheLockIsAnUnknownError()
{
    const Desk desk;
    QCOMPARE(mkfifo(QFile::encodeName(desk.path("velda.lck")).constData(), 0600), 0);
    QLockFile lock(lockFileName);
    QVERIFY(!takeInstanceLock(lock)); // does not wait for a writer
    QCOMPARE(m_warned, QStringList("Ошибка создания файла velda.lck\n"));
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
