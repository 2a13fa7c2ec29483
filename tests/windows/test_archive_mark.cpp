#include "records/file_attr.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <windows.h>

/// The new-mark: the archive attribute of the file, turned off.
class TestArchiveMark : public QObject
{
    Q_OBJECT

private slots:
    void fileThatWasWrittenIsNotNew();
    void markIsTheArchiveAttributeTurnedOff();
    void markGoesWithARenamedFile();
    void contentStaysAsItIs();
    void missingFileIsNotNewAndCannotBeMarked();
    void nameThatIsNotLatinCannotBeMarked();
    void markedFileBelowACyrillicDirectoryIsNew();
};

namespace
{
DWORD attributesOf(const QString &path)
{
    return GetFileAttributesW(QDir::toNativeSeparators(path).toStdWString().c_str());
}
} // namespace

void TestArchiveMark::fileThatWasWrittenIsNotNew()
{
    const Desk desk;
    desk.write("inp/a", "TEXT");
    QVERIFY(!CFileAttr("inp/a").checkNew());
    QCOMPARE(attributesOf("inp/a") & FILE_ATTRIBUTE_ARCHIVE, DWORD(FILE_ATTRIBUTE_ARCHIVE));
}

void TestArchiveMark::markIsTheArchiveAttributeTurnedOff()
{
    const Desk desk;
    desk.write("inp/a", "TEXT");
    const CFileAttr mark("inp\\a");
    mark.setNew();
    QCOMPARE(attributesOf("inp/a"), DWORD(FILE_ATTRIBUTE_NORMAL));
    QVERIFY(mark.checkNew());
    mark.clearNew();
    QCOMPARE(attributesOf("inp/a"), DWORD(FILE_ATTRIBUTE_ARCHIVE));
    QVERIFY(!mark.checkNew());
}

void TestArchiveMark::markGoesWithARenamedFile()
{
    const Desk desk;
    desk.write("inp/a", "TEXT");
    desk.write("inp/b", "TEXT");
    CFileAttr("inp/a").setNew();
    QVERIFY(QFile::rename("inp/a", "inp/c"));
    QVERIFY(!CFileAttr("inp/b").checkNew());
    CFileAttr("inp/c").clearNew();
    QVERIFY(!CFileAttr("inp/c").checkNew());
}

void TestArchiveMark::contentStaysAsItIs()
{
    const Desk desk;
    desk.write("inp/a", "TEXT");
    CFileAttr("inp/a").setNew();
    QCOMPARE(desk.read("inp/a"), QByteArray("TEXT"));
    CFileAttr("inp/a").clearNew();
    QCOMPARE(desk.read("inp/a"), QByteArray("TEXT"));
}

void TestArchiveMark::missingFileIsNotNewAndCannotBeMarked()
{
    const Desk desk;
    CFileAttr("inp/none").setNew();
    QVERIFY(!CFileAttr("inp/none").checkNew());
    QVERIFY(!QFile::exists("inp/none"));
}

// The call takes the path in Latin-1.
void TestArchiveMark::nameThatIsNotLatinCannotBeMarked()
{
    const Desk desk;
    const QString name = QStringLiteral("inp/с001"); // a Cyrillic letter
    desk.write(name, "TEXT");
    CFileAttr(name).setNew();
    QVERIFY(!CFileAttr(name).checkNew());
    QCOMPARE(attributesOf(name) & FILE_ATTRIBUTE_ARCHIVE, DWORD(FILE_ATTRIBUTE_ARCHIVE));
}

// Telegrams are named from the current directory, whatever stands above it.
void TestArchiveMark::markedFileBelowACyrillicDirectoryIsNew()
{
    const Desk desk;
    desk.write(QStringLiteral("Оператор связи/inp/a"), "TEXT");
    QVERIFY(QDir::setCurrent(desk.path(QStringLiteral("Оператор связи"))));
    CFileAttr("inp\\a").setNew();
    const bool isNew = CFileAttr("inp\\a").checkNew();
    QVERIFY(QDir::setCurrent(desk.path()));
    QVERIFY(isNew);
}

QTEST_GUILESS_MAIN(TestArchiveMark)
#include "test_archive_mark.moc"
