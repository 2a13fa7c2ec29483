#include "app/ordinary_reader.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/open_files.h"
#include "tests/support/read_only.h"

#include <QFileInfo>
#include <QtTest>

/// The reader of many files.
class TestOrdinaryReader : public QObject
{
    Q_OBJECT

private slots:
    void fileIsReadInPieces();
    void emptyFileHasNothing();
    void fileThatGrowsIsReadToItsEnd();
    void fileThatIsCutEndsThere();
    void linkToAFileIsRead();
    void whatIsNoOrdinaryFileIsNotOpened_data() { specialFiles(); }
    void whatIsNoOrdinaryFileIsNotOpened();
    void whatTookTheFilesPlaceIsNotOpened_data() { specialFiles(); }
    void whatTookTheFilesPlaceIsNotOpened();
    void fileThatCannotBeOpenedIsNotOpen();
    void openingClosesTheFormerFile();
    void closedReaderReadsNothing();
};

namespace
{
QByteArray piece(COrdinaryReader &reader, int size)
{
    QByteArray bytes(size, '?');
    bytes.truncate(reader.read(bytes.data(), size));
    return bytes;
}
} // namespace

void TestOrdinaryReader::fileIsReadInPieces()
{
    const Desk desk;
    desk.write("a", QByteArray("AB\0CDEF", 7));
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("a")));
    QVERIFY(reader.isOpen());
    QCOMPARE(piece(reader, 3), QByteArray("AB\0", 3));
    QCOMPARE(piece(reader, 3), QByteArray("CDE"));
    QCOMPARE(piece(reader, 3), QByteArray("F"));
    QCOMPARE(piece(reader, 3), QByteArray());
}

void TestOrdinaryReader::emptyFileHasNothing()
{
    const Desk desk;
    desk.write("a", "");
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("a")));
    QCOMPARE(piece(reader, 3), QByteArray());
}

void TestOrdinaryReader::fileThatGrowsIsReadToItsEnd()
{
    const Desk desk;
    desk.write("a", "ABC");
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("a")));
    desk.write("a", "ABCDEFGH");
    QCOMPARE(piece(reader, 5), QByteArray("ABCDE"));
    QCOMPARE(piece(reader, 5), QByteArray("FGH"));
    QCOMPARE(piece(reader, 5), QByteArray());
}

void TestOrdinaryReader::fileThatIsCutEndsThere()
{
    const Desk desk;
    desk.write("a", "ABCDEFGH");
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("a")));
    QCOMPARE(piece(reader, 2), QByteArray("AB"));
    QVERIFY(QFile::resize("a", 3));
    QCOMPARE(piece(reader, 5), QByteArray("C"));
    QCOMPARE(piece(reader, 5), QByteArray());
}

void TestOrdinaryReader::linkToAFileIsRead()
{
    const Desk desk;
    desk.write("a", "ABC");
    QVERIFY(QFile::link(desk.path("a"), "link"));
    COrdinaryReader reader;
    QVERIFY(reader.open(QFileInfo("link")));
    QCOMPARE(piece(reader, 5), QByteArray("ABC"));
}

void TestOrdinaryReader::whatIsNoOrdinaryFileIsNotOpened()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a");
    COrdinaryReader reader;
    QVERIFY(!reader.open(QFileInfo("a")));
    QVERIFY(!reader.isOpen());
    QVERIFY(stands(desk, kind, "a"));
}

void TestOrdinaryReader::whatTookTheFilesPlaceIsNotOpened()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    desk.write("a", "ABC");
    QFileInfo listed("a");
    QVERIFY(listed.isFile()); // as it remembers
    QVERIFY(QFile::remove("a"));
    place(desk, kind, "a");
    const int before = openFiles();
    COrdinaryReader reader;
    QVERIFY(!reader.open(listed));
    QCOMPARE(openFiles(), before);
}

void TestOrdinaryReader::fileThatCannotBeOpenedIsNotOpen()
{
    const Desk desk;
    desk.write("closed/a", "ABC");
    const ReadOnly closed(desk, "closed", ReadOnly::Refused);
    COrdinaryReader reader;
    QVERIFY(!reader.open(QFileInfo("closed/a")));
    QVERIFY(!reader.open(QFileInfo("missing")));
    QVERIFY(!reader.isOpen());
}

void TestOrdinaryReader::openingClosesTheFormerFile()
{
    const Desk desk;
    desk.write("a", "ABC");
    desk.write("b", "DEF");
    const int before = openFiles();
    {
        COrdinaryReader reader;
        QVERIFY(reader.open(QFileInfo("a")));
        QVERIFY(reader.open(QFileInfo("b")));
        QCOMPARE(openFiles(), before + 1);
        QCOMPARE(piece(reader, 5), QByteArray("DEF"));
    }
    QCOMPARE(openFiles(), before);
}

void TestOrdinaryReader::closedReaderReadsNothing()
{
    const Desk desk;
    desk.write("a", "ABC");
    COrdinaryReader reader;
    QCOMPARE(piece(reader, 5), QByteArray());
    QVERIFY(reader.open(QFileInfo("a")));
    reader.close();
    QVERIFY(!reader.isOpen());
    QCOMPARE(piece(reader, 5), QByteArray());
}

QTEST_GUILESS_MAIN(TestOrdinaryReader)
#include "test_ordinary_reader.moc"
