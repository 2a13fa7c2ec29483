#include "app/clock.h"
#include "app/options.h"
#include "tests/records/journal_file.h"
#include "tests/support/row.h"

#include <random>

/// The journal's file: its bytes after each save, and what is read back.
class TestProtocolFile : public QObject
{
    Q_OBJECT

private slots:
    void nameIsStartupUntilTheFirstLoad();
    void nameIsMadeOfTheDate();
    void nameFollowsTheClockAtLoad();

    void fileHoldsTheLinesJoinedByLineFeeds_data() { twoModes(); }
    void fileHoldsTheLinesJoinedByLineFeeds();
    void eachSaveLeavesTheJoinedList_data() { twoModes(); }
    void eachSaveLeavesTheJoinedList();
    void emptyListMakesAnEmptyFile_data() { twoModes(); }
    void emptyListMakesAnEmptyFile();
    void dayWithAnEmptyLastLineEndsInALineFeed();
    void surrogatePairMayBeSplitByASave();

    void listThatWasExchangedIsWrittenWhole_data();
    void listThatWasExchangedIsWrittenWhole();
    void earlierDayIsLeftWhenTheNameMoves_data() { twoModes(); }
    void earlierDayIsLeftWhenTheNameMoves();

    void saveContinuesTheFile_data() { twoModes(); }
    void saveContinuesTheFile();

    void keptOpenFileGetsItsTextWithTheFlush();
    void flushAloneBringsTheTextToTheDisk();
    void flushLeavesAClosedFileAlone();
    void keptOpenFileStaysOpen();
    void flushRequestStaysWhileTheFileIsClosedEachTime();
    void rewriteAllClosesTheKeptOpenFile();
    void rewriteAllMakesTheWholeFile_data() { twoModes(); }
    void rewriteAllMakesTheWholeFile();
    void modeMayChangeWhileTheProgramRuns();
};

void TestProtocolFile::nameIsStartupUntilTheFirstLoad()
{
    QCOMPARE(CProtocol().fileName, QString("startup.prt"));
}

void TestProtocolFile::nameIsMadeOfTheDate()
{
    Desk desk;
    Options.pathPrt = "journal";
    QCOMPARE(CProtocol::pathForDate(QDate(2026, 1, 2)),
             "journal" + QString(QDir::separator()) + "20260102.prt");
    Log.setFileDate(QDate(2027, 12, 31));
    QCOMPARE(Log.fileName, "journal" + QString(QDir::separator()) + "20271231.prt");
}

void TestProtocolFile::nameFollowsTheClockAtLoad()
{
    Desk desk;
    desk.write("prt/20260801.prt", "\1A");
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 0)));
    Log.Load();
    QCOMPARE(QFileInfo(Log.fileName).fileName(), QString("20260801.prt"));
    QCOMPARE(Log.lines, QStringList{"\1A"});
}

void TestProtocolFile::fileHoldsTheLinesJoinedByLineFeeds()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    Log.add(text("|АБ\r\n"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    Log.add(text("#12"), ProtocolSent);
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\1|АБ<>\n\00312:00:00 Событие\n\2#12"));
}

void TestProtocolFile::eachSaveLeavesTheJoinedList()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    std::mt19937 chance(20260731);
    const QString letters = text("АБЯ \r\n|#&\"<>12\u10D0\U0001F4E0");
    for (int step = 0; step < 2000; ++step) {
        QString piece;
        for (auto n = chance() % 6; n > 0; --n)
            piece += letters.at(int(chance() % ulong(letters.size())));
        const auto type = ProtocolTypes(1 + chance() % 5);
        Log.lineWidthLimit = chance() % 3 == 0 ? 7 : 0;
        if (chance() % 8 == 0)
            Log.addCacheServiceString(piece, type, chance() % 2 == 0);
        else
            Log.add(piece, type);
        if (keepOpen)
            saveAndFlush();
        QCOMPARE(desk.read(Today), Log.lines.join('\n').toUtf8());
    }
    QVERIFY(Log.lines.size() > 500);
}

void TestProtocolFile::emptyListMakesAnEmptyFile()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    Log.Save();
    QCOMPARE(desk.names("prt"), QStringList{"20260731.prt"});
    QCOMPARE(desk.read(Today), QByteArray());
    Log.add(text("А"), ProtocolSent);
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\2А"));
}

void TestProtocolFile::dayWithAnEmptyLastLineEndsInALineFeed()
{
    Desk desk;
    Log.add(text("А\n"), ProtocolReceived);
    QCOMPARE(desk.read(Today), QByteArray("\1А>\n"));
    Log.addServiceString(text("Событие"), ProtocolInfo);
    QCOMPARE(desk.read(Today), QByteArray("\1А>\n\3Событие\n"));
}

void TestProtocolFile::surrogatePairMayBeSplitByASave()
{
    Desk desk;
    const QString pair = text("\U0001F4E0");
    QCOMPARE(pair.size(), 2);
    Log.add(text("А"), ProtocolSent);
    Log.add(pair.left(1), ProtocolSent);
    Log.add(pair.mid(1), ProtocolSent);
    QCOMPARE(desk.read(Today), QByteArray("\2А\xF0\x9F\x93\xA0"));
}

void TestProtocolFile::listThatWasExchangedIsWrittenWhole_data()
{
    QTest::addColumn<QStringList>("outside");
    row("cleared", QStringList());
    row("another first line", QStringList{"\1X", "\1BCD", "\1E"});
    row("another line before the last", QStringList{"\1A", "\1XYZ", "\1E"});
    row("another last line", QStringList{"\1A", "\1BCD", "\1X"});
    row("one line", QStringList{"\1A"});
    row("one line more", QStringList{"\1X", "\1BCD", "\1E", "\1F"});
    row("nothing but the last line longer", QStringList{"\1A", "\1BCD", "\1EF"});
}

void TestProtocolFile::listThatWasExchangedIsWrittenWhole()
{
    QFETCH(QStringList, outside);
    for (const bool keepOpen : {false, true}) {
        Desk desk;
        Options.protocolFileNoClose = keepOpen;
        Log.lines = QStringList{"\1A", "\1BCD", "\1E"};
        Log.Save();
        Log.lines = outside;
        saveAndFlush();
        QCOMPARE(desk.read(Today), outside.join('\n').toUtf8());
    }
}

void TestProtocolFile::earlierDayIsLeftWhenTheNameMoves()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    Log.addServiceString(text("Смена суток"), ProtocolInfo);
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 0)));
    Log.Load();
    QVERIFY(Log.lines.isEmpty());
    Log.addServiceString(text("Протокол открыт"), ProtocolInfo);
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\3Смена суток\n"));
    QCOMPARE(desk.read("prt/20260801.prt"), QByteArray("\3Протокол открыт\n"));
}

void TestProtocolFile::saveContinuesTheFile()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    Log.add(text("А"), ProtocolReceived);
    const quint64 first = node(desk);
    QVERIFY(first != 0);
    Log.add(text("Б\nВ"), ProtocolReceived);
    Log.addServiceString(text("Событие"), ProtocolInfo);
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\1АБ>\n\1В\n\3Событие\n"));
    QCOMPARE(node(desk), first);
}

void TestProtocolFile::keptOpenFileGetsItsTextWithTheFlush()
{
    Desk desk;
    Options.protocolFileNoClose = true;
    Log.add(text("А"), ProtocolSent);
    saveAndFlush();
    QVERIFY(!Log.flushRequested);
    Log.add(text("Б"), ProtocolSent);
    QCOMPARE(desk.read(Today), QByteArray("\2А"));
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\2АБ"));
}

void TestProtocolFile::flushAloneBringsTheTextToTheDisk()
{
    Desk desk;
    Options.protocolFileNoClose = true;
    Log.add(text("А"), ProtocolSent);
    saveAndFlush();
    Log.add(text("Б"), ProtocolSent);
    Log.flush();
    QCOMPARE(desk.read(Today), QByteArray("\2АБ"));
    saveAndFlush(); // not a second time
    QCOMPARE(desk.read(Today), QByteArray("\2АБ"));
}

void TestProtocolFile::flushLeavesAClosedFileAlone()
{
    Desk desk;
    Log.flush();
    QCOMPARE(desk.names("prt"), QStringList());
}

void TestProtocolFile::keptOpenFileStaysOpen()
{
    Desk desk;
    Log.add(text("А"), ProtocolSent);
    QVERIFY(!Log.file.isOpen());
    Options.protocolFileNoClose = true;
    Log.add(text("Б"), ProtocolSent);
    QVERIFY(Log.file.isOpen());
    QCOMPARE(QDir::toNativeSeparators(Log.file.fileName()), Log.fileName);
    Log.setFileDate(QDate(2026, 8, 1));
    Log.Save();
    QVERIFY(Log.file.isOpen());
    QCOMPARE(QDir::toNativeSeparators(Log.file.fileName()), Log.fileName);
    QCOMPARE(desk.read(Today), QByteArray("\2АБ"));
}

void TestProtocolFile::flushRequestStaysWhileTheFileIsClosedEachTime()
{
    Desk desk;
    saveAndFlush();
    QVERIFY(Log.flushRequested);
}

void TestProtocolFile::rewriteAllClosesTheKeptOpenFile()
{
    Desk desk;
    Options.protocolFileNoClose = true;
    Log.add(text("А"), ProtocolSent);
    QVERIFY(Log.file.isOpen());
    Log.rewriteAll = true;
    Log.Save();
    QVERIFY(!Log.file.isOpen());
    QVERIFY(!Log.rewriteAll);
    QCOMPARE(desk.read(Today), QByteArray("\2А"));
    Log.add(text("Б"), ProtocolSent); // opened again
    QVERIFY(Log.file.isOpen());
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\2АБ"));
}

void TestProtocolFile::rewriteAllMakesTheWholeFile()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    Log.lines = QStringList{"\1A", "\1B", "\1C", "\1D"};
    saveAndFlush();
    Log.lines.replace(1, "\1X");
    Log.rewriteAll = true;
    Log.Save();
    QCOMPARE(desk.read(Today), QByteArray("\1A\n\1X\n\1C\n\1D"));
    QVERIFY(!Log.rewriteAll);
}

void TestProtocolFile::modeMayChangeWhileTheProgramRuns()
{
    Desk desk;
    Log.add(text("А"), ProtocolSent);
    Options.protocolFileNoClose = true;
    Log.add(text("Б"), ProtocolSent);
    Options.protocolFileNoClose = false;
    Log.add(text("В"), ProtocolSent);
    QVERIFY(!Log.file.isOpen());
    QCOMPARE(desk.read(Today), QByteArray("\2АБВ"));
}

QTEST_GUILESS_MAIN(TestProtocolFile)
#include "test_protocol_file.moc"
