#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/ordinary_reader.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/utils.h"

#include <QDir>
#include <QFile>
#include <QThread>
#include <QtTest>

#include <memory>

#include <windows.h>

/// Files that another program, a virus scanner mostly, has open while they are to be renamed, and what bears
/// a file's name and is none.
class TestHeldFile : public QObject
{
    Q_OBJECT

private slots:
    void fileThatIsLetGoInTimeIsRenamed();
    void fileThatStaysHeldIsToldAndStays();
    void heldFileIsRenamedOnTheNextTry();
    void heldSettingsAreReplacedOnceLetGo();
    void contentOfSettingsThatStayHeldIsNotLost();
    void fileThatASearchReadsIsRenamedAndRemoved();
    void renamingTakesNoOthersPlace();
    void renamingTakesALongPath();
    void deviceUnderAFilesNameIsNotOpened_data();
    void deviceUnderAFilesNameIsNotOpened();
    void directoryIsNotOpened();
};

namespace
{
constexpr unsigned long MomentMs = 60; // less than the patience of the renaming

/// As a scanner opens a file: others may read it, and neither write nor rename it.
class Scanner
{
public:
    explicit Scanner(const QString &path)
        : m_handle(CreateFileW(QDir::toNativeSeparators(path).toStdWString().c_str(), GENERIC_READ,
                               FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr))
    {
    }
    ~Scanner() { letGo(); }
    Scanner(const Scanner &) = delete;
    Scanner &operator=(const Scanner &) = delete;

    [[nodiscard]] bool holds() const { return m_handle != INVALID_HANDLE_VALUE; }
    void letGo()
    {
        if (m_handle != INVALID_HANDLE_VALUE)
            CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }
    /// Lets go a moment later, from another thread; to be waited for.
    [[nodiscard]] std::unique_ptr<QThread> letGoSoon()
    {
        std::unique_ptr<QThread> later(QThread::create([this] {
            QThread::msleep(MomentMs);
            letGo();
        }));
        later->start();
        return later;
    }

private:
    HANDLE m_handle;
};
} // namespace

void TestHeldFile::fileThatIsLetGoInTimeIsRenamed()
{
    const Desk desk;
    desk.write("out/a", "TEXT");
    desk.write("out/20260731/b", "TEXT");
    Scanner scanner(desk.path("out/a"));
    QVERIFY(scanner.holds() && !QFile::rename("out/a", "out/d"));
    const std::unique_ptr<QThread> later = scanner.letGoSoon();
    const bool renamed = CUtils::renameFile("out\\a", "out\\20260731", "a", false);
    QVERIFY(later->wait());
    QVERIFY(renamed);
    QCOMPARE(desk.read("out/20260731/a"), QByteArray("TEXT"));
    QVERIFY(!QFile::exists("out/a"));
}

void TestHeldFile::fileThatStaysHeldIsToldAndStays()
{
    const Desk desk;
    desk.write("out/a", "TEXT");
    const Scanner scanner(desk.path("out/a"));
    QVERIFY(scanner.holds());
    QVERIFY(!CUtils::renameFile("out\\a", "out\\20260731", "a", false));
    QCOMPARE(desk.read("out/a"), QByteArray("TEXT"));
    QVERIFY(!QFile::exists("out/20260731/a"));
    QCOMPARE(desk.journal(), (QStringList{"312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a",
                                          "412:00:00 Ошибка переименования", QString()}));
}

void TestHeldFile::heldFileIsRenamedOnTheNextTry()
{
    const Desk desk;
    desk.write("out/a", "TEXT");
    Scanner scanner(desk.path("out/a"));
    QVERIFY(!CUtils::renameFile("out\\a", "out\\20260731", "a", false));
    scanner.letGo();
    QVERIFY(CUtils::renameFile("out\\a", "out\\20260731", "a", false));
    QCOMPARE(desk.names("out/20260731"), QStringList{"a"});
}

void TestHeldFile::heldSettingsAreReplacedOnceLetGo()
{
    const Desk desk;
    desk.write("velda.ini", "OLD");
    Scanner scanner(desk.path("velda.ini"));
    const std::unique_ptr<QThread> later = scanner.letGoSoon();
    const bool replaced = replaceWholeFile("velda.ini", "NEW");
    QVERIFY(later->wait());
    QVERIFY(replaced);
    QCOMPARE(desk.read("velda.ini"), QByteArray("NEW"));
    QCOMPARE(desk.names(QString(), "velda.ini*"), QStringList{"velda.ini"});
}

void TestHeldFile::contentOfSettingsThatStayHeldIsNotLost()
{
    const Desk desk;
    desk.write("velda.ini", "OLD");
    const Scanner scanner(desk.path("velda.ini"));
    QVERIFY(!replaceWholeFile("velda.ini", "NEW"));
    QCOMPARE(desk.read("velda.ini"), QByteArray("OLD"));
    QCOMPARE(desk.names(QString(), "velda.ini*"), QStringList{"velda.ini"});
}

// The program's own reading holds up nobody: a telegram that is sent meanwhile goes to its day.
void TestHeldFile::fileThatASearchReadsIsRenamedAndRemoved()
{
    const Desk desk;
    desk.write("out/a", "TEXT");
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("out/a")));
    QVERIFY(CUtils::renameFile("out\\a", "out\\20260731", "b", false));
    QVERIFY(QFile::remove("out/20260731/b"));
    char bytes[10] = {};
    QCOMPARE(reader.read(bytes, sizeof bytes), 4);
    QCOMPARE(QByteArray(bytes), QByteArray("TEXT"));
}

void TestHeldFile::renamingTakesNoOthersPlace()
{
    const Desk desk;
    desk.write("a", "TEXT");
    desk.write("b", "OTHER");
    QVERIFY(!moveBeside("a", "b"));
    QCOMPARE(desk.read("a"), QByteArray("TEXT"));
    QCOMPARE(desk.read("b"), QByteArray("OTHER"));
    QVERIFY(moveOver("a", "b"));
    QCOMPARE(desk.read("b"), QByteArray("TEXT"));
}

// Behind 260 characters the plain calls end.
void TestHeldFile::renamingTakesALongPath()
{
    const Desk desk;
    const QString deep = QString(120, 'a') + '/' + QString(120, 'b') + '/';
    desk.write(deep + "a", "TEXT");
    QVERIFY(desk.path(deep).size() > 260);
    QVERIFY(moveBeside(desk.path(deep + "a"), desk.path(deep + "b")));
    QCOMPARE(desk.read(deep + "b"), QByteArray("TEXT"));
    QVERIFY(replaceWholeFile(desk.path(deep + "b"), "NEW"));
    QCOMPARE(desk.read(deep + "b"), QByteArray("NEW"));
}

void TestHeldFile::deviceUnderAFilesNameIsNotOpened_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"NUL", "nul", "CON", "AUX", "PRN", "COM1", "LPT1", "out/NUL", "CONIN$"})
        row(name, QString(name));
}

void TestHeldFile::deviceUnderAFilesNameIsNotOpened()
{
    QFETCH(QString, name);
    const Desk desk;
    QFile file(name);
    QVERIFY(!openOrdinary(file, QIODevice::ReadOnly));
    QVERIFY(!openOrdinary(file, QIODevice::ReadWrite));
    QVERIFY(!readOrdinary(name, 1000));
}

void TestHeldFile::directoryIsNotOpened()
{
    const Desk desk;
    QFile file("out");
    QVERIFY(!openOrdinary(file, QIODevice::ReadOnly));
    QVERIFY(!openOrdinary(file, QIODevice::ReadWrite));
    QVERIFY(!openOrdinary(file, QIODevice::WriteOnly | QIODevice::Append));
    QVERIFY(!replaceWholeFile("out", "TEXT"));
    QVERIFY(QFileInfo("out").isDir());
}

QTEST_GUILESS_MAIN(TestHeldFile)
#include "test_held_file.moc"
