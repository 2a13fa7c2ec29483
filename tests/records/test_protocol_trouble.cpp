#include "app/options.h"
#include "tests/records/journal_file.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

namespace
{
void addAndFlush(const QString &piece)
{
    Log.flushRequested = true;
    Log.add(piece, ProtocolSent);
}
} // namespace

/// The journal on a disk that fails, and under other writers.
class TestProtocolTrouble : public QObject
{
    Q_OBJECT

private slots:
    void fileThatIsNotWhatWasLeftIsWrittenWhole_data();
    void fileThatIsNotWhatWasLeftIsWrittenWhole();
    void missingDirectoryLeavesTheListInMemory_data() { twoModes(); }
    void missingDirectoryLeavesTheListInMemory();
    void directoryInPlaceOfTheFileIsLeftAlone_data() { twoModes(); }
    void directoryInPlaceOfTheFileIsLeftAlone();
    void fullDiskInTheMiddleOfASaveIsMadeGoodByTheNext_data();
    void fullDiskInTheMiddleOfASaveIsMadeGoodByTheNext();
    void fullDiskDuringAReplacementLeavesTheOldFile();
    void fullDiskAfterALoadIsMadeGoodByTheNextSave_data() { twoModes(); }
    void fullDiskAfterALoadIsMadeGoodByTheNextSave();
    void failedRewriteAllIsTriedAgain();
    void directoryThatIsNoJournalReadsAsEmpty();
    void tornAndForeignFilesLoad_data();
    void tornAndForeignFilesLoad();
};

void TestProtocolTrouble::fileThatIsNotWhatWasLeftIsWrittenWhole_data()
{
    QTest::addColumn<bool>("keepOpen");
    QTest::addColumn<bool>("remove");
    QTest::addColumn<QByteArray>("content");
    for (const bool keepOpen : {false, true}) {
        const char *mode = keepOpen ? "kept open" : "closed";
        QTest::addRow("%s, removed", mode) << keepOpen << true << QByteArray();
        QTest::addRow("%s, emptied", mode) << keepOpen << false << QByteArray();
        QTest::addRow("%s, cut", mode) << keepOpen << false << QByteArray("\2АБ").left(4);
        QTest::addRow("%s, longer", mode) << keepOpen << false << QByteArray("\2АБВ ЧУЖОЕ");
        QTest::addRow("%s, something else", mode) << keepOpen << false << QByteArray("ЧУЖОЕ");
    }
    QTest::addRow("closed, something else of the same size") << false << false << QByteArray("\1ЭЮЯ");
}

void TestProtocolTrouble::fileThatIsNotWhatWasLeftIsWrittenWhole()
{
    QFETCH(bool, keepOpen);
    QFETCH(bool, remove);
    QFETCH(QByteArray, content);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    addAndFlush(text("АБВ"));
    QCOMPARE(desk.read(Today), QByteArray("\2АБВ"));
    if (remove) {
        QVERIFY(QFile::remove(desk.path(Today)));
    } else {
        writeFromOutside(desk, content);
    }
    addAndFlush(text("Г"));
    QCOMPARE(desk.read(Today), QByteArray("\2АБВГ"));
    addAndFlush(text("Д"));
    QCOMPARE(desk.read(Today), QByteArray("\2АБВГД"));
}

void TestProtocolTrouble::missingDirectoryLeavesTheListInMemory()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    QVERIFY(QDir().rmdir(desk.path("prt")));
    addAndFlush(text("АБ\n"));
    addAndFlush(text("В"));
    QCOMPARE(Log.lines, QStringList({text("\2АБ>"), text("\2В")})); // and no line reports it
    QVERIFY(!Log.file.isOpen());
    QVERIFY(Log.writeError.isEmpty());
    QVERIFY(QDir().mkdir(desk.path("prt")));
    addAndFlush(text("Г"));
    QCOMPARE(desk.read(Today), QByteArray("\2АБ>\n\2ВГ"));
}

void TestProtocolTrouble::directoryInPlaceOfTheFileIsLeftAlone()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    QVERIFY(QDir().mkdir(desk.path(Today)));
    addAndFlush(text("АБ"));
    QCOMPARE(Log.lines, QStringList{text("\2АБ")});
    QVERIFY(QDir().rmdir(desk.path(Today)));
    addAndFlush(text("В"));
    QCOMPARE(desk.read(Today), QByteArray("\2АБВ"));
}

void TestProtocolTrouble::fullDiskInTheMiddleOfASaveIsMadeGoodByTheNext_data()
{
    QTest::addColumn<bool>("keepOpen");
    QTest::addColumn<int>("room"); // bytes; the first text takes 2001, the second 4000 more
    for (const bool keepOpen : {false, true}) {
        const char *mode = keepOpen ? "kept open" : "closed";
        for (const int room : {2001, 2002, 3000, 6000})
            QTest::addRow("%s, room for %d bytes", mode, room) << keepOpen << room;
    }
}

void TestProtocolTrouble::fullDiskInTheMiddleOfASaveIsMadeGoodByTheNext()
{
    QFETCH(bool, keepOpen);
    QFETCH(int, room);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    const QByteArray whole = "\2" + text("А").repeated(1000).toUtf8() + text("Б").repeated(2000).toUtf8();
    addAndFlush(text("А").repeated(1000));
    QCOMPARE(desk.read(Today), whole.left(2001));
    {
        const FullDisk full{qint64(room)};
        addAndFlush(text("Б").repeated(2000));
        QCOMPARE(Log.lines.size(), 1);
        QCOMPARE(desk.read(Today), whole.left(room));
        saveAndFlush(); // still full
        QCOMPARE(desk.read(Today), whole.left(room));
    }
    saveAndFlush();
    QCOMPARE(desk.read(Today), whole);
    addAndFlush(text("В"));
    QCOMPARE(desk.read(Today), whole + QByteArray("В"));
}

void TestProtocolTrouble::fullDiskDuringAReplacementLeavesTheOldFile()
{
    Desk desk;
    const QByteArray foreign = QByteArray(3000, 'B');
    Log.add(text("А"), ProtocolSent);
    writeFromOutside(desk, foreign);
    {
        const FullDisk full{1};
        Log.addServiceString(text("Событие"), ProtocolInfo);
        QCOMPARE(desk.read(Today), foreign);
        QCOMPARE(desk.names("prt"), QStringList{"20260731.prt"});
        QVERIFY(!Log.writeError.isEmpty());
    }
    Log.Save();
    QVERIFY(Log.writeError.isEmpty());
    QCOMPARE(desk.read(Today), QByteArray("\2А\n\3Событие\n"));
}

void TestProtocolTrouble::fullDiskAfterALoadIsMadeGoodByTheNextSave()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    const QByteArray day = "\1A \n" + QByteArray(3000, 'B') + "\n"; // read back without the blank
    desk.write(Today, day);
    const quint64 first = node(desk);
    Log.Load();
    {
        const FullDisk full{3010};
        Log.flushRequested = true;
        Log.addServiceString(text("Запуск"), ProtocolInfo);
        QVERIFY(desk.read(Today).startsWith(day));
        QVERIFY(!Log.writeError.isEmpty());
        saveAndFlush(); // still full
        QVERIFY(!Log.writeError.isEmpty());
    }
    saveAndFlush();
    QVERIFY(Log.writeError.isEmpty());
    QCOMPARE(desk.read(Today), day + "\3Запуск\n");
    QCOMPARE(node(desk), first);
}

void TestProtocolTrouble::failedRewriteAllIsTriedAgain()
{
    Desk desk;
    Log.add(text("А"), ProtocolSent);
    QVERIFY(QDir(desk.path("prt")).removeRecursively());
    Log.rewriteAll = true;
    Log.Save();
    QVERIFY(Log.rewriteAll);
    QVERIFY(QDir().mkdir(desk.path("prt")));
    Log.Save();
    QVERIFY(!Log.rewriteAll);
    QCOMPARE(desk.read(Today), QByteArray("\2А"));
}

void TestProtocolTrouble::directoryThatIsNoJournalReadsAsEmpty()
{
    Desk desk;
    QVERIFY(CProtocol::readLines(desk.path("prt")).isEmpty());
    QVERIFY(CProtocol::readLines(desk.path("none")).isEmpty());
}

void TestProtocolTrouble::tornAndForeignFilesLoad_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("lines");
    row("a megabyte of zeros", QByteArray(1 << 20, '\0'), 1);
    row("a megabyte of line feeds", QByteArray(1 << 20, '\n'), (1 << 20));
    row("a megabyte without a line feed", QByteArray(1 << 20, '\xFF'), 1);
    row("cut within a letter", QByteArray("\1АБ").left(4), 1);
    QByteArray every;
    for (int code = 0; code < 256; ++code)
        every += char(code);
    row("every byte", every, 2);
}

void TestProtocolTrouble::tornAndForeignFilesLoad()
{
    QFETCH(QByteArray, content);
    QFETCH(int, lines);
    Desk desk;
    desk.write(Today, content);
    Log.Load();
    QCOMPARE(Log.lines.size(), lines);
    const bool goesOn = Log.lines.last().isEmpty(); // with what stands there as zeros or a line feed
    Log.addServiceString(text("Запуск"), ProtocolInfo);
    const QByteArray written = desk.read(Today);
    QVERIFY(goesOn ? written == Log.lines.join('\n').toUtf8() : written.startsWith(content));
    QVERIFY(written.endsWith("\3Запуск\n"));
}

QTEST_GUILESS_MAIN(TestProtocolTrouble)
#include "test_protocol_trouble.moc"
