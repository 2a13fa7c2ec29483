#include "app/options.h"
#include "records/file_attr.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/utils.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// So that service lines are not held back by an empty list.
void openJournal()
{
    Log.lines = QStringList{QString()};
}

void makeDirectories(const Desk &desk, const QStringList &names)
{
    for (const QString &name : names)
        QVERIFY(QDir().mkpath(desk.path(name)));
}
} // namespace

/// Moves and retention of files.
class TestUtilsFiles : public QObject
{
    Q_OBJECT

private slots:
    void renameMovesTheFileAndSaysSo();
    void renameIntoAMissingDayDirectoryMakesIt();
    void renameWithAMissingParentFailsAndJournalsTheError();
    void renameOntoAPresentFileFails();
    void renameOfAVanishedFileFails();
    void renameMarksOnlyIfAsked_data();
    void renameMarksOnlyIfAsked();
    void renameLineWaitsForTheRunningLine();

    void clearDirRemovesTheLimitDateAndEarlier();
    void clearDirWithKeep240RemovesTheDirectoryOfThatDay();
    void clearDirTouchesOnlyNamesOfEightCharacters();
    void clearDirComparesNamesAsStrings();
    void clearDirJournalsEachPath();
    void clearDirOfAMissingRootGives0();
    void clearDirDoesNotFollowALink();

    void clearInDirKeepsTheJournalOfTheLimitDate();
    void clearInDirTouchesOnlyJournals();
    void clearInDirJournalsEachName();
    void clearInDirOfAMissingRootDoesNothing();
    void invalidLimitRemovesNothing();

    void pathBelowTheDataDirectoryLosesIt_data();
    void pathBelowTheDataDirectoryLosesIt();
};

void TestUtilsFiles::renameMovesTheFileAndSaysSo()
{
    Desk desk;
    openJournal();
    desk.write("out/a", "text");
    QVERIFY(QDir().mkdir("out/20260731"));
    QVERIFY(CUtils::renameFile("out/a", "out/20260731", "b.001", false));
    QCOMPARE(desk.read("out/20260731/b.001"), QByteArray("text"));
    QVERIFY(!QFile::exists("out/a"));
    QCOMPARE(desk.journal(), QStringList({text("312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/b.001"), ""}));
}

void TestUtilsFiles::renameIntoAMissingDayDirectoryMakesIt()
{
    Desk desk;
    openJournal();
    desk.write("out/a", "text");
    QVERIFY(CUtils::renameFile("out/a", "out/20260731", "a", false));
    QCOMPARE(desk.read("out/20260731/a"), QByteArray("text"));
    QCOMPARE(Log.lines.size(), 2); // no word of an error
}

void TestUtilsFiles::renameWithAMissingParentFailsAndJournalsTheError()
{
    Desk desk;
    openJournal();
    desk.write("out/a", "text");
    QVERIFY(!CUtils::renameFile("out/a", "none/20260731", "a", true));
    QCOMPARE(desk.read("out/a"), QByteArray("text"));
    QVERIFY(!QFile::exists("none"));
    QCOMPARE(desk.journal(), QStringList({text("312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В none/20260731/a"),
                                          text("412:00:00 Ошибка переименования"), ""}));
}

void TestUtilsFiles::renameOntoAPresentFileFails()
{
    Desk desk;
    openJournal();
    desk.write("out/a", "new");
    desk.write("out/d/a", "old");
    QVERIFY(!CUtils::renameFile("out/a", "out/d", "a", false));
    QCOMPARE(desk.read("out/d/a"), QByteArray("old"));
    QCOMPARE(desk.read("out/a"), QByteArray("new"));
    QCOMPARE(desk.journal().at(1), text("412:00:00 Ошибка переименования"));
}

void TestUtilsFiles::renameOfAVanishedFileFails()
{
    Desk desk;
    openJournal();
    QVERIFY(!CUtils::renameFile("out/a", "out/20260731", "a", true));
    QCOMPARE(desk.journal().at(1), text("412:00:00 Ошибка переименования"));
    QVERIFY(!QFile::exists("out/20260731/a"));
}

void TestUtilsFiles::renameMarksOnlyIfAsked_data()
{
    QTest::addColumn<bool>("mark");
    QTest::addColumn<bool>("directoryThere");
    row("marked", true, true);
    row("not marked", false, true);
    row("marked, on the second try", true, false);
    row("not marked, on the second try", false, false);
}

void TestUtilsFiles::renameMarksOnlyIfAsked()
{
    QFETCH(bool, mark);
    QFETCH(bool, directoryThere);
    Desk desk;
    desk.write("out/a", "text");
    if (directoryThere)
        QVERIFY(QDir().mkdir("out/20260731"));
    QVERIFY(CUtils::renameFile("out/a", "out/20260731", "a", mark));
    QCOMPARE(CFileAttr("out/20260731/a").checkNew(), mark);
}

void TestUtilsFiles::renameLineWaitsForTheRunningLine()
{
    Desk desk;
    Log.add(text("АБ"), ProtocolReceived);
    desk.write("out/a", "text");
    QVERIFY(CUtils::renameFile("out/a", "out/d", "a", false));
    QCOMPARE(desk.journal(), QStringList{text("1АБ")});
    QCOMPARE(Log.cachedText, text("12:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/d") + QDir::separator() + "a");
}

void TestUtilsFiles::clearDirRemovesTheLimitDateAndEarlier()
{
    Desk desk;
    makeDirectories(desk, {"inp/20251202", "inp/20251203", "inp/20251204", "inp/20260731"});
    desk.write("inp/20251203/a", "text");
    desk.write("inp/20251203/.a.new", "");
    desk.write("inp/20251203/deep/a", "text");
    QCOMPARE(CUtils::clearDir("inp", QDate(2025, 12, 3)), 2);
    QCOMPARE(desk.names("inp"), QStringList({"20251204", "20260731"}));
}

void TestUtilsFiles::clearDirWithKeep240RemovesTheDirectoryOfThatDay()
{
    Desk desk; // 31 July 2026; 240 days back is 3 December 2025
    makeDirectories(desk, {"inp/20251203", "inp/20251204"});
    desk.write("prt/20251202.prt", "\1A");
    desk.write("prt/20251203.prt", "\1A");
    const QDate limit = QDate(2026, 7, 31).addDays(-240);
    QCOMPARE(CUtils::clearDir("inp", limit), 1);
    CUtils::clearInDir("prt", limit);
    QCOMPARE(desk.names("inp"), QStringList{"20251204"});
    QVERIFY(QFile::exists("prt/20251203.prt"));
    QVERIFY(!QFile::exists("prt/20251202.prt"));
}

void TestUtilsFiles::clearDirTouchesOnlyNamesOfEightCharacters()
{
    Desk desk;
    makeDirectories(desk, {"inp/2025010", "inp/202501011", "inp/20250101"});
    desk.write("inp/20250102", "a file of that name");
    QCOMPARE(CUtils::clearDir("inp", QDate(2026, 7, 31)), 1);
    QCOMPARE(desk.names("inp"), QStringList({"2025010", "202501011", "20250102"}));
}

void TestUtilsFiles::clearDirComparesNamesAsStrings()
{
    Desk desk;
    makeDirectories(desk, {"inp/archives", text("inp/приказы1"), "inp/19991231", "inp/(backup)"});
    QCOMPARE(CUtils::clearDir("inp", QDate(2026, 7, 31)), 2); // "(" stands below the digits
    QCOMPARE(desk.names("inp"), QStringList({"archives", text("приказы1")}));
}

void TestUtilsFiles::clearDirJournalsEachPath()
{
    Desk desk;
    openJournal();
    makeDirectories(desk, {"inp/20250101", "inp/20250102"});
    CUtils::clearDir("inp", QDate(2026, 7, 31));
    QCOMPARE(desk.journal(), QStringList({text("312:00:00 Удаление каталога inp/20250101"),
                                          text("312:00:00 Удаление каталога inp/20250102"), ""}));
}

void TestUtilsFiles::clearDirOfAMissingRootGives0()
{
    Desk desk;
    openJournal();
    QCOMPARE(CUtils::clearDir("none", QDate(2026, 7, 31)), 0);
    QCOMPARE(Log.lines, QStringList{QString()});
}

void TestUtilsFiles::clearDirDoesNotFollowALink()
{
    Desk desk;
    desk.write("precious/a", "text");
    QVERIFY(QFile::link(desk.path("precious"), desk.path("inp/20250101")));
    QCOMPARE(CUtils::clearDir("inp", QDate(2026, 7, 31)), 0);
    QCOMPARE(desk.read("precious/a"), QByteArray("text"));
}

void TestUtilsFiles::clearInDirKeepsTheJournalOfTheLimitDate()
{
    Desk desk;
    for (const char *name : {"prt/20251202.prt", "prt/20251203.prt", "prt/20251204.prt"})
        desk.write(name, "\1A");
    CUtils::clearInDir("prt", QDate(2025, 12, 3));
    QCOMPARE(desk.names("prt"), QStringList({"20251203.prt", "20251204.prt"}));
}

void TestUtilsFiles::clearInDirTouchesOnlyJournals()
{
    Desk desk;
    for (const char *name :
         {"prt/20250101.txt", "prt/2025010.prt", "prt/202501011.prt", "prt/20250101.prt.bak"})
        desk.write(name, "\1A");
    makeDirectories(desk, {"prt/20250102.prt"});
    CUtils::clearInDir("prt", QDate(2026, 7, 31));
    QCOMPARE(desk.names("prt").size(), 5);
}

void TestUtilsFiles::clearInDirJournalsEachName()
{
    Desk desk;
    openJournal();
    desk.write("prt/20250101.prt", "\1A");
    desk.write("prt/20250102.prt", "\1A");
    CUtils::clearInDir("prt", QDate(2026, 7, 30));
    QCOMPARE(desk.journal(), QStringList({text("312:00:00 Удаление 20250101.prt"),
                                          text("312:00:00 Удаление 20250102.prt"), ""}));
}

void TestUtilsFiles::clearInDirOfAMissingRootDoesNothing()
{
    Desk desk;
    openJournal();
    CUtils::clearInDir("none", QDate(2026, 7, 31));
    QCOMPARE(Log.lines, QStringList{QString()});
}

void TestUtilsFiles::invalidLimitRemovesNothing()
{
    Desk desk;
    makeDirectories(desk, {"inp/20250101"});
    desk.write("prt/20250101.prt", "\1A");
    QCOMPARE(CUtils::clearDir("inp", QDate()), 0);
    CUtils::clearInDir("prt", QDate());
    QCOMPARE(desk.names("inp"), QStringList{"20250101"});
    QCOMPARE(desk.names("prt"), QStringList{"20250101.prt"});
}

void TestUtilsFiles::pathBelowTheDataDirectoryLosesIt_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    row("below", "/data/velda/sound/a.wav", "sound/a.wav");
    row("itself", "/data/velda/", "");
    row("beside", "/data/velda2/a.wav", "/data/velda2/a.wav");
    row("elsewhere", "/other/a.wav", "/other/a.wav");
    row("already relative", "sound/a.wav", "sound/a.wav");
    row("within another path", "/mnt/data/velda/a", "/mnt/data/velda/a");
    row("empty", "", "");
}

void TestUtilsFiles::pathBelowTheDataDirectoryLosesIt()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    Desk desk;
    Options.appPath = "/data/velda/";
    QCOMPARE(CUtils::checkAndMakeRelativePath(path), expected);
}

QTEST_GUILESS_MAIN(TestUtilsFiles)
#include "test_utils_files.moc"
