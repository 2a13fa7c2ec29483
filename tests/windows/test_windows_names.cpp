#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "app/system_path_win.h"
#include "link/utils_ports.h"
#include "records/file_info.h"
#include "records/new_telegram.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/attachments.h"
#include "text/utils.h"

#include <QDir>
#include <QSerialPort>
#include <QtTest>

/// How Windows names things: drives, backslashes, devices, ports.
class TestWindowsNames : public QObject
{
    Q_OBJECT

private slots:
    void directoriesOfADayStandBehindABackslash();
    void journalAndSideCarsStandInTheirDirectories();
    void dataDirectoryMayBeginWithADrive_data();
    void dataDirectoryMayBeginWithADrive();
    void directoryOfAUserWithACyrillicNameIsEntered();
    void chosenPathBelowTheDataDirectoryIsKeptRelative();
    void longPathIsGivenWholeToTheSystem_data();
    void longPathIsGivenWholeToTheSystem();
    void nameOfADeviceIsNoNameOfAFile_data();
    void nameOfADeviceIsNoNameOfAFile();
    void portsAboveNineAreFoundByTheirNumber_data();
    void portsAboveNineAreFoundByTheirNumber();
};

void TestWindowsNames::directoriesOfADayStandBehindABackslash()
{
    const Desk desk;
    QCOMPARE(State.pathInp_forDate(QDate(2026, 7, 31)), QString("inp\\20260731"));
    QCOMPARE(State.pathOut_currentDate(), QString("out\\20260731"));
    QCOMPARE(Options.appPath, desk.path() + '\\');
}

void TestWindowsNames::journalAndSideCarsStandInTheirDirectories()
{
    const Desk desk;
    Log.addServiceString(QStringLiteral("12:00:00 Запуск"), ProtocolInfo);
    Log.Save();
    QCOMPARE(desk.names("prt"), QStringList{"20260731.prt"});

    CFileInfo record;
    record.number = QStringLiteral("123456");
    QVERIFY(record.Save("out\\20260731u001"));
    QCOMPARE(desk.names("out", "*.dat"), QStringList{"20260731u001.dat"});
    CFileInfo loaded;
    QVERIFY(loaded.Load(desk.path("out/20260731u001")));
    QCOMPARE(loaded.number, QString("123456"));
}

void TestWindowsNames::dataDirectoryMayBeginWithADrive_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("directory");
    row("backslashes", "-d=C:\\velda\\data", "C:\\velda\\data");
    row("slashes", "-d=C:/velda/data", "C:/velda/data");
    row("another machine's", "-d=\\\\server\\velda", "\\\\server\\velda");
}

void TestWindowsNames::dataDirectoryMayBeginWithADrive()
{
    QFETCH(QString, argument);
    QTEST(dataDirectory({argument}, QStringLiteral("C:/program")), "directory");
}

void TestWindowsNames::directoryOfAUserWithACyrillicNameIsEntered()
{
    const Desk desk;
    const QString place = desk.path(QStringLiteral("Оператор связи"));
    QVERIFY(QDir().mkdir(place));
    QVERIFY(enterDataDirectory(QDir::toNativeSeparators(place)));
    QCOMPARE(Options.appPath, QDir::toNativeSeparators(place) + '\\');
    QCOMPARE(QDir::current().canonicalPath(), QDir(place).canonicalPath());
    Log.addServiceString(QStringLiteral("12:00:00 Запуск"), ProtocolInfo);
    Options.CheckAndMakeFolders();
    Log.Save();
    QVERIFY(QFile::exists(place + "/prt/20260731.prt"));
    QVERIFY(enterDataDirectory(desk.path()));
}

void TestWindowsNames::chosenPathBelowTheDataDirectoryIsKeptRelative()
{
    const Desk desk;
    QVERIFY(enterDataDirectory(QDir::toNativeSeparators(desk.path())));
    const QString chosen = QDir::toNativeSeparators(desk.path("sound/raketa.wav"));
    QCOMPARE(CUtils::checkAndMakeRelativePath(chosen), QString("sound\\raketa.wav"));
    QCOMPARE(CUtils::checkAndMakeRelativePath(desk.path("sound/raketa.wav")), QString("sound/raketa.wav"));
    QCOMPARE(CUtils::checkAndMakeRelativePath("D:\\other.wav"), QString("D:\\other.wav"));
}

void TestWindowsNames::longPathIsGivenWholeToTheSystem_data()
{
    const QString deep(250, 'a');
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("given");
    row("short", "out/20260731/a", "out\\20260731\\a");
    row("short with a drive", "C:/a", "C:\\a");
    row("a device", "CON", "CON");
    row("long", "C:/" + deep, "\\\\?\\C:\\" + deep);
    row("long with steps back", "C:/x/../" + deep, "\\\\?\\C:\\" + deep);
    row("another machine's", "//server/" + deep, "\\\\?\\UNC\\server\\" + deep);
    row("whole already", "\\\\?\\C:\\" + deep, "\\\\?\\C:\\" + deep);
}

void TestWindowsNames::longPathIsGivenWholeToTheSystem()
{
    QFETCH(QString, path);
    QTEST(QString::fromStdWString(systemPath(path)), "given");
}

void TestWindowsNames::nameOfADeviceIsNoNameOfAFile_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"CON", "nul", "AUX.txt", "COM1", "com9.tlg", "LPT3", "PRN", "C:\\x\\NUL", "a:b"})
        row(name, QString(name));
}

// The file is made, and made of that name: no device has taken it.
void TestWindowsNames::nameOfADeviceIsNoNameOfAFile()
{
    QFETCH(QString, name);
    const Desk desk;
    const QString safe = safeFileName(name);
    QVERIFY(safe != name);
    desk.write("inp/" + safe, "TEXT");
    QCOMPARE(desk.names("inp", "*[!0-9]*"), QStringList{safe});
    QCOMPARE(desk.read("inp/" + safe), QByteArray("TEXT"));
}

void TestWindowsNames::portsAboveNineAreFoundByTheirNumber_data()
{
    QTest::addColumn<QString>("name");
    row("one figure", "COM3");
    row("two figures", "COM12");
    row("three figures", "COM256");
    row("with its place", "\\\\.\\COM12");
}

void TestWindowsNames::portsAboveNineAreFoundByTheirNumber()
{
    QFETCH(QString, name);
    const Desk desk;
    qputenv("VELDA_PORTS", "10000001=" + name.toLatin1());
    const QString found = CUtils::getPortNameBySN(QStringLiteral("10000001"));
    qunsetenv("VELDA_PORTS");
    QCOMPARE(found, name);
    QSerialPort port(found);
    QCOMPARE(port.portName(), name.section('\\', -1));
    QVERIFY(!port.open(QIODevice::ReadWrite)); // no such device, and no file of that name is made
    QCOMPARE(port.error(), QSerialPort::DeviceNotFoundError);
    QVERIFY(!QFile::exists(port.portName()));
}

QTEST_MAIN(TestWindowsNames)
#include "test_windows_names.moc"
