#include "app/ordinary_file.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <fcntl.h>
#include <unistd.h>

/// Files that are opened only if they are files.
class TestOrdinaryFile : public QObject
{
    Q_OBJECT

private slots:
    void contentIsRead_data();
    void contentIsRead();
    void linkToAFileIsRead();
    void missingFileIsNotRead();
    void linkToNothingIsNotRead();
    void specialFileIsNotOpened_data();
    void specialFileIsNotOpened();
    void fifoWithAReaderIsNotOpened();
    void limitCountsBytes_data();
    void limitCountsBytes();
    void fileBeyondMemoryIsNotRead();
    void appendingMakesTheFile();
    void appendingGoesToTheEnd();
    void readWriteMakesNoFile();
    void moveTakesThePlaceOfAnother();
};

void TestOrdinaryFile::contentIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    row("nothing", QByteArray(""));
    row("text", QByteArray("ТЕКСТ\r\n"));
    row("with zeros", QByteArray("A\0B\0", 4));
}

void TestOrdinaryFile::contentIsRead()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    desk.write("a", content);
    const auto read = readOrdinary("a", 100);
    QVERIFY(read.has_value());
    QCOMPARE(*read, content);
}

void TestOrdinaryFile::linkToAFileIsRead()
{
    const Desk desk;
    desk.write("a", "content");
    QVERIFY(QFile::link(desk.path("a"), desk.path("b")));
    QCOMPARE(readOrdinary("b", 100).value_or("nothing"), QByteArray("content"));
}

void TestOrdinaryFile::missingFileIsNotRead()
{
    const Desk desk;
    QVERIFY(!readOrdinary("a", 100));
    QVERIFY(!readOrdinary("a/b", 100));
    QVERIFY(!readOrdinary("", 100));
}

void TestOrdinaryFile::linkToNothingIsNotRead()
{
    const Desk desk;
    QVERIFY(QFile::link(desk.path("none"), desk.path("a")));
    QVERIFY(!readOrdinary("a", 100));
}

void TestOrdinaryFile::specialFileIsNotOpened_data()
{
    specialFiles();
}

void TestOrdinaryFile::specialFileIsNotOpened()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a");
    for (const QIODevice::OpenMode mode :
         {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::OpenMode(QIODevice::ReadWrite),
          QIODevice::WriteOnly | QIODevice::Append}) {
        QFile file("a");
        QVERIFY(!openOrdinary(file, mode)); // and neither waits
        QVERIFY(!file.isOpen());
    }
    QVERIFY(!readOrdinary("a", 100));
    QVERIFY(stands(desk, kind, "a"));
}

void TestOrdinaryFile::fifoWithAReaderIsNotOpened()
{
    const Desk desk;
    makeFifo(desk.path("a"));
    const int reader = open(QFile::encodeName(desk.path("a")).constData(), O_RDONLY | O_NONBLOCK);
    QVERIFY(reader >= 0);
    QFile file("a");
    QVERIFY(!openOrdinary(file, QIODevice::WriteOnly | QIODevice::Append));
    close(reader);
}

void TestOrdinaryFile::limitCountsBytes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("read");
    row("one below", 99, true);
    row("just so many", 100, true);
    row("one more", 101, false);
}

void TestOrdinaryFile::limitCountsBytes()
{
    QFETCH(int, size);
    QFETCH(bool, read);
    const Desk desk;
    desk.write("a", QByteArray(size, 'A'));
    QCOMPARE(readOrdinary("a", 100).has_value(), read);
}

void TestOrdinaryFile::fileBeyondMemoryIsNotRead()
{
    const Desk desk;
    QFile file(desk.path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Q_INT64_C(1) << 40)); // of holes
    QVERIFY(!readOrdinary("a", 1 << 20));
}

void TestOrdinaryFile::appendingMakesTheFile()
{
    const Desk desk;
    QFile file("a");
    QVERIFY(openOrdinary(file, QIODevice::WriteOnly | QIODevice::Append));
    QCOMPARE(file.write("content"), 7);
    file.close();
    QCOMPARE(desk.read("a"), QByteArray("content"));
}

void TestOrdinaryFile::appendingGoesToTheEnd()
{
    const Desk desk;
    desk.write("a", "head ");
    QFile file("a");
    QVERIFY(openOrdinary(file, QIODevice::WriteOnly | QIODevice::Append));
    QCOMPARE(file.size(), 5);
    QCOMPARE(file.write("tail"), 4);
    file.close();
    QCOMPARE(desk.read("a"), QByteArray("head tail"));
}

void TestOrdinaryFile::readWriteMakesNoFile()
{
    const Desk desk;
    QFile file("a");
    QVERIFY(!openOrdinary(file, QIODevice::ReadWrite));
    QVERIFY(!QFile::exists("a"));
}

void TestOrdinaryFile::moveTakesThePlaceOfAnother()
{
    const Desk desk;
    desk.write("new", "new");
    desk.write("old", "old");
    QVERIFY(moveOver("new", "old"));
    QCOMPARE(desk.read("old"), QByteArray("new"));
    QVERIFY(!QFile::exists("new"));
    QVERIFY(!moveOver("none", "old"));
    QCOMPARE(desk.read("old"), QByteArray("new"));
}

QTEST_GUILESS_MAIN(TestOrdinaryFile)
#include "test_ordinary_file.moc"
