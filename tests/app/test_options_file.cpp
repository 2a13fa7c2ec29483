#include "app/options.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QSettings>
#include <QtTest>

/// velda.ini as a file: the subscribers in it, the folders beside it, and what happens to it when it is
/// damaged or cannot be written.
class TestOptionsFile : public QObject
{
    Q_OBJECT

private slots:
    void twoSubscribersWriteTwoRecordsAndEnd();
    void oldRecordBehindTheEndIsNeverReadAgain();
    void emptySubscriberListRemovesTheSection();
    void subscriberWithAnEmptyNoteEndsInTwoBars();
    void recordWithFewerThanFourFieldsEndsTheReading();
    void emptyRecordEndsTheReading();
    void recordOfFourFieldsWithoutAFinalBarIsRead();
    void furtherFieldsOfARecordAreDropped();
    void listsOfSubscribersGoTheSameWay();
    void listWithoutNumbersHasAnEmptyField();
    void listWithFewerThanThreeFieldsEndsTheReading();
    void recordsBehindAShortOneAreLostAtTheNextSave();
    void recordWrittenByHandNeedsNoQuotes();
    void loadForgetsTheFormerSubscribers();

    void missingFileIsWrittenByTheFirstSave();
    void loadWritesNothing();
    void foreignKeysStayInTheFile();
    void damagedFileGivesUsableOptions_data();
    void damagedFileGivesUsableOptions();
    void damagedFileIsReadableAfterASave();
    void fullDiskLeavesTheOldFile();
    void directoryInPlaceOfTheFileIsNoHarm();
    void specialFileIsNeitherReadNorReplaced_data() { specialFiles(); }
    void specialFileIsNeitherReadNorReplaced();
    void fileTooLargeToBeOneGivesTheDefaults();

    void foldersAreMadeInOneStep();
    void missingParentIsNotMade();
    void foldersThatExistStay();
    void nonAsciiTextIsEscaped();
};

namespace
{
CAbonent subscriber(const QString &name)
{
    return {name, QStringLiteral("П"), QStringLiteral("114567"), QStringLiteral("доп")};
}

QString shown(const CAbonent &one)
{
    return QStringList({one.name, one.category, one.number, one.note}).join('/');
}

QStringList names()
{
    QStringList all;
    for (const CAbonent &one : Options.abonents)
        all << one.name;
    return all;
}

QString stored(const char *key)
{
    return QSettings(Options.appPath + "velda.ini", QSettings::IniFormat)
        .value(QString::fromLatin1(key))
        .toString();
}
} // namespace

void TestOptionsFile::twoSubscribersWriteTwoRecordsAndEnd()
{
    const Desk desk;
    Options.abonents = {subscriber("Один"), subscriber("Два")};
    Options.Save();
    QCOMPARE(stored("ABONENTS/A_0"), QStringLiteral("Один|П|114567|доп|"));
    QCOMPARE(stored("ABONENTS/A_1"), QStringLiteral("Два|П|114567|доп|"));
    QCOMPARE(stored("ABONENTS/A_2"), QStringLiteral("end"));
    QVERIFY(desk.readText("velda.ini").contains("\nA_2=end\n"));
}

void TestOptionsFile::oldRecordBehindTheEndIsNeverReadAgain()
{
    const Desk desk;
    Options.abonents = {subscriber("1"), subscriber("2"), subscriber("3"), subscriber("4")};
    Options.Save();
    Options.abonents = {subscriber("1"), subscriber("2")};
    Options.Save();
    QCOMPARE(stored("ABONENTS/A_2"), QStringLiteral("end"));
    QCOMPARE(stored("ABONENTS/A_3"), QStringLiteral("4|П|114567|доп|")); // stays in the file

    Options.Load();
    QCOMPARE(names(), QStringList({"1", "2"}));
}

void TestOptionsFile::emptySubscriberListRemovesTheSection()
{
    const Desk desk;
    Options.abonents = {subscriber("1"), subscriber("2")};
    Options.abonentLists = {{"l", {"1"}, ""}};
    Options.Save();
    QVERIFY(desk.readText("velda.ini").contains("[ABONENTS]"));
    QVERIFY(desk.readText("velda.ini").contains("[ABONENTLISTS]"));

    Options.abonents.clear();
    Options.abonentLists.clear();
    Options.Save();
    QVERIFY(!desk.readText("velda.ini").contains("ABONENT"));
    QVERIFY(!desk.readText("velda.ini").contains("\nA_"));
    QVERIFY(!desk.readText("velda.ini").contains("\nAL_"));
}

void TestOptionsFile::subscriberWithAnEmptyNoteEndsInTwoBars()
{
    const Desk desk;
    Options.abonents = {{"Имя", "", "5", ""}};
    Options.Save();
    QCOMPARE(stored("ABONENTS/A_0"), QStringLiteral("Имя||5||"));
    Options.Load();
    QCOMPARE(shown(Options.abonents.value(0)), QStringLiteral("Имя//5/"));
}

void TestOptionsFile::recordWithFewerThanFourFieldsEndsTheReading()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a|b|c|d|\nA_1=a|b|c\nA_2=e|f|g|h|\n");
    Options.Load();
    QCOMPARE(names(), QStringList("a"));
}

void TestOptionsFile::emptyRecordEndsTheReading()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a|b|c|d|\nA_1=\nA_2=e|f|g|h|\n");
    Options.Load();
    QCOMPARE(names(), QStringList("a"));
}

void TestOptionsFile::recordOfFourFieldsWithoutAFinalBarIsRead()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a|b|c|d\nA_1=|||\n");
    Options.Load();
    QCOMPARE(Options.abonents.size(), 2);
    QCOMPARE(shown(Options.abonents.value(0)), QStringLiteral("a/b/c/d"));
    QCOMPARE(shown(Options.abonents.value(1)), QStringLiteral("///"));
}

void TestOptionsFile::furtherFieldsOfARecordAreDropped()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a|b|c|d|e|f|\n");
    Options.Load();
    QCOMPARE(shown(Options.abonents.value(0)), QStringLiteral("a/b/c/d"));
}

void TestOptionsFile::listsOfSubscribersGoTheSameWay()
{
    const Desk desk;
    Options.abonentLists = {{"Все", {"1", "22", "333"}, "прим"}, {"Один", {"7"}, ""}};
    Options.Save();
    QCOMPARE(stored("ABONENTLISTS/AL_0"), QStringLiteral("Все|1,22,333|прим|"));
    QCOMPARE(stored("ABONENTLISTS/AL_1"), QStringLiteral("Один|7||"));
    QCOMPARE(stored("ABONENTLISTS/AL_2"), QStringLiteral("end"));

    Options.abonentLists.clear();
    Options.Load();
    QCOMPARE(Options.abonentLists.size(), 2);
    QCOMPARE(Options.abonentLists.at(0).name, QStringLiteral("Все"));
    QCOMPARE(Options.abonentLists.at(0).numbers, QStringList({"1", "22", "333"}));
    QCOMPARE(Options.abonentLists.at(0).note, QStringLiteral("прим"));
    QCOMPARE(Options.abonentLists.at(1).numbers, QStringList("7"));
}

void TestOptionsFile::listWithoutNumbersHasAnEmptyField()
{
    const Desk desk;
    Options.abonentLists = {{"Пусто", {}, "прим"}};
    Options.Save();
    QCOMPARE(stored("ABONENTLISTS/AL_0"), QStringLiteral("Пусто||прим|"));
    Options.Load();
    QCOMPARE(Options.abonentLists.value(0).name, QStringLiteral("Пусто"));
    QVERIFY(Options.abonentLists.value(0).numbers.isEmpty());
}

void TestOptionsFile::listWithFewerThanThreeFieldsEndsTheReading()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTLISTS]\nAL_0=\"a|1,2|n|\"\nAL_1=b|3\nAL_2=\"c|4|n|\"\n");
    Options.Load();
    QCOMPARE(Options.abonentLists.size(), 1);
}

void TestOptionsFile::recordsBehindAShortOneAreLostAtTheNextSave()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a|b|c|d|\nA_1=a|b|c\nA_2=e|f|g|h|\n");
    Options.Load();
    Options.Save();
    QCOMPARE(stored("ABONENTS/A_1"), QStringLiteral("end"));
    Options.Load();
    QCOMPARE(names(), QStringList("a"));
}

void TestOptionsFile::recordWrittenByHandNeedsNoQuotes()
{
    const Desk desk;
    desk.write("velda.ini", "[ABONENTS]\nA_0=a,z|b|123456|d|\nA_1=e|f|g|h|\n"
                            "[ABONENTLISTS]\nAL_0=a|123456,234567,345678|n|\nAL_1=b|1||\nAL_2=end\n");
    Options.Load();
    QCOMPARE(names(), QStringList({"a,z", "e"}));
    QCOMPARE(Options.abonentLists.size(), 2);
    QCOMPARE(Options.abonentLists.at(0).numbers, QStringList({"123456", "234567", "345678"}));
    QCOMPARE(Options.abonentLists.at(0).note, QStringLiteral("n"));
    Options.Save();
    QCOMPARE(stored("ABONENTLISTS/AL_0"), QStringLiteral("a|123456,234567,345678|n|"));
}

void TestOptionsFile::loadForgetsTheFormerSubscribers()
{
    const Desk desk;
    Options.abonents = {subscriber("1")};
    Options.abonentLists = {{"l", {"1"}, ""}};
    Options.Load();
    QVERIFY(Options.abonents.isEmpty());
    QVERIFY(Options.abonentLists.isEmpty());
}

void TestOptionsFile::missingFileIsWrittenByTheFirstSave()
{
    const Desk desk;
    Options.Load();
    QVERIFY(!QFile::exists(desk.path("velda.ini")));
    Options.Save();
    QVERIFY(desk.readText("velda.ini").contains("[CONNECT]\n"));
    QVERIFY(!desk.readText("velda.ini").contains("STATUS")); // a section with nothing in it leaves no trace
}

void TestOptionsFile::loadWritesNothing()
{
    const Desk desk;
    const QByteArray content = "[CONNECT]\nCKSMode=true\n[OTHER]\nTZ=3\n";
    desk.write("velda.ini", content);
    Options.Load();
    QCOMPARE(desk.read("velda.ini"), content);
    QCOMPARE(desk.names("."), QStringList({"inp", "out", "prt", "velda.ini"}));
}

void TestOptionsFile::foreignKeysStayInTheFile()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nforeign=1\n[FOREIGN]\nx=y\n");
    Options.Load();
    Options.Save();
    QCOMPARE(stored("CONNECT/foreign"), QStringLiteral("1"));
    QCOMPARE(stored("FOREIGN/x"), QStringLiteral("y"));
}

void TestOptionsFile::damagedFileGivesUsableOptions_data()
{
    QTest::addColumn<QByteArray>("content");
    QByteArray noise;
    quint32 seed = 12345;
    for (int i = 0; i < 100000; ++i) {
        seed = seed * 1664525U + 1013904223U;
        noise += char(seed >> 24);
    }
    row("empty", QByteArray());
    row("noise", noise);
    row("zeros", QByteArray(4096, '\0'));
    row("torn in a key", QByteArray("[CONNECT]\nTcpM"));
    row("torn in a section", QByteArray("[OTHER]\nTZ=3\n[CONN"));
    row("torn in an escape", QByteArray("[PATH]\nlastOpenFilePath=\"\\x4"));
    row("no sections", QByteArray("processMode=2\nTZ=3\n"));
    row("a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    row("a broken variant", QByteArray("[WINDOW]\nmainTitle=@Variant(\\0\\0\\0\\x7f\\xff)\n"));
    row("a broken rectangle", QByteArray("[WINDOW]\ngeometryMainForm=@Rect(1 2)\n"));
    row("one endless line", QByteArray(5 * 1024 * 1024, 'x'));
}

void TestOptionsFile::damagedFileGivesUsableOptions()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    desk.write("velda.ini", content);
    Options.Load();
    QCOMPARE(Options.pathInp, QStringLiteral("inp"));
    QCOMPARE(Options.Port, 5674);
    QCOMPARE(Options.TcpMode, true);
    QCOMPARE(Options.processMode, 1);
    QVERIFY(Options.abonents.isEmpty());
}

void TestOptionsFile::damagedFileIsReadableAfterASave()
{
    const Desk desk;
    desk.write("velda.ini", "\xff\xfe[[[\n=\n;\n[OTHER]\nTZ=3\nno value\n");
    Options.Load();
    QCOMPARE(Options.TZ, 3);
    Options.TZ = 5;
    Options.mainTitle = QStringLiteral("Пункт");
    Options.Save();
    Options.TZ = 0;
    Options.Load();
    QCOMPARE(Options.TZ, 5);
    QCOMPARE(Options.mainTitle, QStringLiteral("Пункт"));
}

void TestOptionsFile::fullDiskLeavesTheOldFile()
{
    const Desk desk;
    Options.Load();
    Options.Save();
    const QByteArray before = desk.read("velda.ini");
    QVERIFY(before.size() > 512);
    Options.mainTitle = QStringLiteral("Пункт");
    {
        const FullDisk fullDisk(512);
        Options.Save();
    }
    QCOMPARE(desk.read("velda.ini"), before);
    QCOMPARE(desk.names(".", "velda*"), QStringList("velda.ini")); // nothing half-written beside it

    Options.Save();
    QCOMPARE(stored("WINDOW/mainTitle"), QStringLiteral("Пункт"));
}

void TestOptionsFile::directoryInPlaceOfTheFileIsNoHarm()
{
    const Desk desk;
    QVERIFY(QDir(desk.path()).mkdir("velda.ini"));
    Options.Load();
    QCOMPARE(Options.pathInp, QStringLiteral("inp"));
    Options.Save();
    QVERIFY(QFileInfo(desk.path("velda.ini")).isDir());
}

void TestOptionsFile::specialFileIsNeitherReadNorReplaced()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "velda.ini");
    Options.Port = 7;
    Options.Load();
    QCOMPARE(Options.Port, 5674);
    Options.Save();
    QVERIFY(stands(desk, kind, "velda.ini"));
}

void TestOptionsFile::fileTooLargeToBeOneGivesTheDefaults()
{
    const Desk desk;
    QFile file(desk.path("velda.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Q_INT64_C(1) << 40)); // of holes
    file.close();
    Options.Port = 7;
    Options.Load();
    QCOMPARE(Options.Port, 5674);
    Options.Save();
    QVERIFY(desk.readText("velda.ini").contains("\nPort=5674\n"));
}

void TestOptionsFile::foldersAreMadeInOneStep()
{
    const Desk desk;
    desk.write("velda.ini", "[PATH]\npathInp=in\npathOut=out2\npathPrt=book\n");
    Options.Load();
    for (const char *folder : {"in", "out2", "book"})
        QVERIFY2(QFileInfo(desk.path(folder)).isDir(), folder);
}

void TestOptionsFile::missingParentIsNotMade()
{
    const Desk desk;
    desk.write("velda.ini", "[PATH]\npathInp=no/such/inp\npathOut=out2\n");
    Options.Load();
    QVERIFY(!QFileInfo::exists(desk.path("no")));
    QVERIFY(QFileInfo(desk.path("out2")).isDir()); // the next one is made all the same
    QVERIFY(Options.CheckAndMakeFolders());
}

void TestOptionsFile::foldersThatExistStay()
{
    const Desk desk;
    desk.write("inp/20260731/a", "x");
    QVERIFY(Options.CheckAndMakeFolders());
    QCOMPARE(desk.read("inp/20260731/a"), QByteArray("x"));
}

void TestOptionsFile::nonAsciiTextIsEscaped()
{
    const Desk desk;
    Options.mainTitle = QStringLiteral("Пункт");
    Options.Save();
    QVERIFY(desk.readText("velda.ini").contains("\nmainTitle=\\x41f\\x443\\x43d\\x43a\\x442\n"));
}

QTEST_MAIN(TestOptionsFile)
#include "test_options_file.moc"
