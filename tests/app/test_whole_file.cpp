#include "app/whole_file.h"
#include "tests/support/file_id.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QRegularExpression>

namespace
{
/// So long that the directory takes no temporary name made of it.
const QString LongName = QString(250, 'n');
} // namespace

/// Files that are replaced whole.
class TestWholeFile : public QObject
{
    Q_OBJECT

private slots:
    void newFileIsMade();
    void oldFileIsReplacedByARename();
    void nothingTemporaryIsLeft();
    void fullDiskLeavesTheOldFile();
    void missingDirectoryGivesFalse();
    void directoryOfThatNameStays();
    void withoutATemporaryFileTheOldOneIsWrittenOver_data();
    void withoutATemporaryFileTheOldOneIsWrittenOver();
    void specialFileIsLeftAlone_data() { specialFiles(); }
    void specialFileIsLeftAlone();
    void linkToAFileStaysOne();
    void linkToNothingMakesItsTarget();
    void permissionsOfTheOldFileStay();
    void temporaryNamesAreNeverTheSame();
    void newFileAppearsWhole();
    void newFileTakesNoOthersPlace_data() { specialFiles(); }
    void newFileTakesNoOthersPlace();
    void newFileThatIsNotWrittenLeavesNothing();
};

void TestWholeFile::newFileIsMade()
{
    Desk desk;
    QVERIFY(replaceWholeFile("a", "content"));
    QCOMPARE(desk.read("a"), QByteArray("content"));
    QVERIFY(replaceWholeFile("empty", ""));
    QVERIFY(QFile::exists("empty"));
}

void TestWholeFile::oldFileIsReplacedByARename()
{
    Desk desk;
    desk.write("a", "old");
    const quint64 old = fileId("a");
    QVERIFY(replaceWholeFile("a", "new"));
    QCOMPARE(desk.read("a"), QByteArray("new"));
    QVERIFY(fileId("a") != old);
}

void TestWholeFile::nothingTemporaryIsLeft()
{
    Desk desk;
    QDir().mkdir("d");
    QVERIFY(replaceWholeFile("d/a", "1"));
    QVERIFY(replaceWholeFile("d/a", "2"));
    QCOMPARE(desk.names("d"), QStringList{"a"});
}

void TestWholeFile::fullDiskLeavesTheOldFile()
{
    Desk desk;
    desk.write("d/a", "old");
    const FullDisk full{100};
    QVERIFY(!replaceWholeFile("d/a", QByteArray(1000, 'n')));
    QCOMPARE(desk.read("d/a"), QByteArray("old"));
    QCOMPARE(desk.names("d"), QStringList{"a"});
}

void TestWholeFile::missingDirectoryGivesFalse()
{
    Desk desk;
    QVERIFY(!replaceWholeFile("none/a", "content"));
    QVERIFY(!QFile::exists("none"));
}

void TestWholeFile::directoryOfThatNameStays()
{
    Desk desk;
    QDir().mkdir("a");
    QVERIFY(!replaceWholeFile("a", "content"));
    QVERIFY(QFileInfo("a").isDir());
}

void TestWholeFile::withoutATemporaryFileTheOldOneIsWrittenOver_data()
{
    QTest::addColumn<QByteArray>("content");
    row("longer", QByteArray("longer than the old one"));
    row("shorter", QByteArray("s"));
    row("empty", QByteArray());
}

void TestWholeFile::withoutATemporaryFileTheOldOneIsWrittenOver()
{
    QFETCH(QByteArray, content);
    Desk desk;
    desk.write(LongName, "old content");
    const quint64 old = fileId(LongName);
    QVERIFY(replaceWholeFile(LongName, content));
    QCOMPARE(desk.read(LongName), content);
    QCOMPARE(fileId(LongName), old);
}

void TestWholeFile::specialFileIsLeftAlone()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a");
    QVERIFY(!replaceWholeFile("a", "content"));
    QVERIFY(stands(desk, kind, "a"));
}

void TestWholeFile::linkToAFileStaysOne()
{
    const Desk desk;
    desk.write("d/target", "old");
    QVERIFY(QFile::link(desk.path("d/target"), desk.path("a")));
    QVERIFY(replaceWholeFile("a", "new"));
    QVERIFY(QFileInfo("a").isSymLink());
    QCOMPARE(desk.read("d/target"), QByteArray("new"));
}

void TestWholeFile::linkToNothingMakesItsTarget()
{
    const Desk desk;
    QVERIFY(QFile::link(desk.path("target"), desk.path("a")));
    QVERIFY(replaceWholeFile("a", "new"));
    QVERIFY(QFileInfo("a").isSymLink());
    QCOMPARE(desk.read("target"), QByteArray("new"));
}

void TestWholeFile::permissionsOfTheOldFileStay()
{
    const Desk desk;
    desk.write("a", "old");
    const QFile::Permissions narrow =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QVERIFY(QFile::setPermissions("a", narrow));
    QVERIFY(replaceWholeFile("a", "new"));
    QCOMPARE(QFile::permissions("a"), narrow);
}

void TestWholeFile::temporaryNamesAreNeverTheSame()
{
    const QRegularExpression form("^d/a\\.velda-[0-9a-f]{8}$");
    const QString one = temporaryName("d/a");
    QVERIFY2(form.match(one).hasMatch(), qPrintable(one));
    QVERIFY(temporaryName("d/a") != one);
}

void TestWholeFile::newFileAppearsWhole()
{
    Desk desk;
    QDir().mkdir("d");
    QVERIFY(writeNewFile("d/a", "content"));
    QCOMPARE(desk.read("d/a"), QByteArray("content"));
    QVERIFY(!writeNewFile("d/a", "other"));
    QCOMPARE(desk.read("d/a"), QByteArray("content"));
    QCOMPARE(desk.names("d"), QStringList{"a"});
}

void TestWholeFile::newFileTakesNoOthersPlace()
{
    QFETCH(SpecialFile, kind);
    Desk desk;
    place(desk, kind, "d/a");
    QVERIFY(!writeNewFile("d/a", "content"));
    QVERIFY(stands(desk, kind, "d/a"));
    QCOMPARE(QDir("d").entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"a"});
}

void TestWholeFile::newFileThatIsNotWrittenLeavesNothing()
{
    Desk desk;
    QDir().mkdir("d");
    const FullDisk full{100};
    QVERIFY(!writeNewFile("d/a", QByteArray(1000, 'n')));
    QVERIFY(!writeNewFile("none/a", "n"));
    QCOMPARE(desk.names("d"), QStringList());
}

QTEST_GUILESS_MAIN(TestWholeFile)
#include "test_whole_file.moc"
