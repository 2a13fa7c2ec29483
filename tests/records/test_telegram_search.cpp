#include "app/options.h"
#include "records/telegram_search.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/odd_names.h"
#include "tests/support/read_only.h"
#include "tests/support/row.h"

#include <QtTest>

namespace
{
constexpr int ReadAtATime = 262144;
const QDate Today(2026, 7, 31);

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Today and the two days before, in both directions.
CTelegramSearch::Request threeDays(const QString &searched = QString())
{
    return {Today.addDays(-2), Today, true, true, searched};
}

/// What was found, "directory/name" below the data directory.
QStringList paths(const CTableViewModel_SearchResult &model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row)
        all << QDir::current().relativeFilePath(model.pathAt(row));
    return all;
}

QStringList found(const CTelegramSearch::Request &request)
{
    CTelegramSearch search(request);
    CTableViewModel_SearchResult result;
    while (search.next(0, result)) {
    }
    return paths(result);
}
} // namespace

/// The search for telegrams of a range of days.
class TestTelegramSearch : public QObject
{
    Q_OBJECT

private slots:
    void daysAreLookedAtInOrderIncomingFirst();
    void directoriesAreLookedAtAsTheirSwitchesSay_data();
    void directoriesAreLookedAtAsTheirSwitchesSay();
    void emptyTextListsAllFilesOfTheRange();
    void endBeforeTheStartFindsNothing_data();
    void endBeforeTheStartFindsNothing();
    void rowTellsDayTimeAndPlace();
    void firstOfADirectoryIsOfTheListingNotOfTheHits();
    void bytesAreCompared_data();
    void bytesAreCompared();
    void oddNamesAreFound_data() { oddNames(); }
    void oddNamesAreFound();
    void hitAcrossTwoReadingsIsFound_data();
    void hitAcrossTwoReadingsIsFound();
    void textLongerThanAReadingIsFound();
    void largeSparseFileIsReadToItsEnd();
    void fileThatCannotBeOpenedIsLeftOut();
    void whatIsNoOrdinaryFileIsNotOpened_data() { specialFiles(); }
    void whatIsNoOrdinaryFileIsNotOpened();
    void fileThatGoesMeanwhileIsLeftOut();

    void stepsAreSmall();
    void aBudgetOfTimeTakesManySteps();
    void whatWasFoundBeforeTheCancelStays();
    void daysAreCounted();
    void overIsOver();
};

void TestTelegramSearch::daysAreLookedAtInOrderIncomingFirst()
{
    const Desk desk;
    for (const char *name :
         {"inp/20260730/b", "out/20260730/a", "inp/20260731/a", "out/20260731/b", "out/20260728/x",
          "inp/20260801/x", "inp/20260730/a", "out/x", "inp/20260730/d/x"})
        desk.write(name, "ABC");
    QCOMPARE(found(threeDays("B")), QStringList({"inp/20260730/a", "inp/20260730/b", "out/20260730/a",
                                                 "inp/20260731/a", "out/20260731/b"}));
}

void TestTelegramSearch::directoriesAreLookedAtAsTheirSwitchesSay_data()
{
    QTest::addColumn<bool>("incoming");
    QTest::addColumn<bool>("outgoing");
    QTest::addColumn<QStringList>("expected");
    row("both", true, true, QStringList{"inp/20260731/a", "out/20260731/b"});
    row("incoming", true, false, QStringList{"inp/20260731/a"});
    row("outgoing", false, true, QStringList{"out/20260731/b"});
    row("neither", false, false, QStringList());
}

void TestTelegramSearch::directoriesAreLookedAtAsTheirSwitchesSay()
{
    QFETCH(bool, incoming);
    QFETCH(bool, outgoing);
    const Desk desk;
    desk.write("inp/20260731/a", "ABC");
    desk.write("out/20260731/b", "ABC");
    QTEST(found({Today, Today, incoming, outgoing, QString()}), "expected");
    QTEST(found({Today, Today, incoming, outgoing, "C"}), "expected");
}

void TestTelegramSearch::emptyTextListsAllFilesOfTheRange()
{
    const Desk desk;
    for (const char *name : {"inp/20260728/x", "inp/20260729/a", "out/20260731/b", "out/20260801/x"})
        desk.write(name, "");
    QCOMPARE(found(threeDays()), QStringList({"inp/20260729/a", "out/20260731/b"}));
}

void TestTelegramSearch::endBeforeTheStartFindsNothing_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    row("a day before", Today, Today.addDays(-1));
    row("no start", QDate(), Today);
    row("no end", Today, QDate());
}

void TestTelegramSearch::endBeforeTheStartFindsNothing()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    const Desk desk;
    desk.write("inp/20260731/a", "ABC");
    desk.write("inp/20260730/a", "ABC");
    desk.write("inp/a", "ABC");
    CTelegramSearch search({from, to, true, true, QString()});
    QVERIFY(search.isOver());
    QCOMPARE(search.dayCount(), 0);
    CTableViewModel_SearchResult result;
    QVERIFY(!search.next(1000, result));
    QCOMPARE(result.rowCount(), 0);
}

void TestTelegramSearch::rowTellsDayTimeAndPlace()
{
    const Desk desk;
    desk.write("out/20260730/20260730u001.007", "ABC");
    CTelegramSearch search(threeDays("ABC"));
    CTableViewModel_SearchResult result;
    while (search.next(0, result)) {
    }
    QCOMPARE(result.rowCount(), 1);
    QCOMPARE(result.at(0).date, QDate(2026, 7, 30));
    QCOMPARE(result.at(0).fileName, QString("20260730u001.007"));
    QCOMPARE(QDir(result.at(0).dirPath), QDir("out/20260730"));
    QCOMPARE(result.at(0).time, QFileInfo("out/20260730/20260730u001.007").birthTime().time());
    QVERIFY(result.at(0).firstInDirectory);
}

void TestTelegramSearch::firstOfADirectoryIsOfTheListingNotOfTheHits()
{
    const Desk desk;
    desk.write("inp/20260730/a", "OTHER");
    desk.write("inp/20260730/b", "ABC");
    desk.write("inp/20260731/a", "ABC");
    desk.write("inp/20260731/b", "ABC");
    CTelegramSearch search(threeDays("ABC"));
    CTableViewModel_SearchResult result;
    while (search.next(0, result)) {
    }
    QCOMPARE(paths(result), QStringList({"inp/20260730/b", "inp/20260731/a", "inp/20260731/b"}));
    QVERIFY(!result.at(0).firstInDirectory);
    QVERIFY(result.at(1).firstInDirectory);
    QVERIFY(!result.at(2).firstInDirectory);
}

void TestTelegramSearch::bytesAreCompared_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("searched");
    QTest::addColumn<bool>("hit");
    const QByteArray zeroFirst("\0\0ABC", 5);
    row("whole", QByteArray("ABC"), "ABC", true);
    row("begin", QByteArray("ABC"), "A", true);
    row("end", QByteArray("ABC"), "C", true);
    row("none", QByteArray("ABC"), "CB", false);
    row("case counts", QByteArray("abc"), "ABC", false);
    row("Cyrillic", text("НАЧАЛО ТЕКСТА КОНЕЦ").toUtf8(), text("ТЕКСТ"), true);
    row("Cyrillic, of like bytes", text("НАЧАЛО").toUtf8(), text("НАЧАЛА"), false);
    row("another encoding", QByteArray("\xD2\xC5\xCA\xD1\xD2"), text("ТЕКСТ"), false);
    row("across a line end", QByteArray("AB\r\nCD"), "B\r\nC", true);
    row("register marks", QByteArray("&ABC#12|"), "C#1", true);
    row("blanks", QByteArray("A  B"), "  ", true);
    row("empty file", QByteArray(), "A", false);
    row("zero byte first", zeroFirst, "ABC", true);
    row("binary", QByteArray("\xFF\xFE\x00\x80\xD0", 5) + "ABC" + QByteArray("\x00\xC3", 2), "ABC", true);
    row("longer than the file", QByteArray("ABC"), "ABCD", false);
}

void TestTelegramSearch::bytesAreCompared()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, searched);
    QFETCH(bool, hit);
    const Desk desk;
    desk.write("inp/20260731/a", content);
    QCOMPARE(found(threeDays(searched)).size(), hit ? 1 : 0);
}

void TestTelegramSearch::oddNamesAreFound()
{
    QFETCH(QString, name);
    const Desk desk;
    desk.write("inp/20260731/" + name, "ABC");
    QCOMPARE(found(threeDays("ABC")), QStringList{"inp/20260731/" + name});
    QCOMPARE(found(threeDays()), QStringList{"inp/20260731/" + name});
}

void TestTelegramSearch::hitAcrossTwoReadingsIsFound_data()
{
    QTest::addColumn<int>("place");
    for (int before = -1; before <= 4; ++before)
        QTest::addRow("%d bytes before the first border", before) << ReadAtATime - before;
    for (int before = -1; before <= 7; ++before) // less what is kept of the first reading
        QTest::addRow("%d bytes before the second border", before) << 2 * ReadAtATime - 3 - before;
}

void TestTelegramSearch::hitAcrossTwoReadingsIsFound()
{
    QFETCH(int, place);
    const Desk desk;
    const QByteArray before(place, 'A');
    desk.write("inp/20260731/a", before + "AAAB");
    desk.write("inp/20260731/b", before + "AAABTHE REST" + QByteArray(ReadAtATime, 'A'));
    desk.write("inp/20260731/c", before + "AACB");
    QCOMPARE(found(threeDays("AAAB")), QStringList({"inp/20260731/a", "inp/20260731/b"}));
}

void TestTelegramSearch::textLongerThanAReadingIsFound()
{
    const Desk desk;
    QByteArray longText;
    for (int number = 0; longText.size() < 3 * ReadAtATime / 2; ++number)
        longText += QByteArray::number(number);
    desk.write("inp/20260731/a", QByteArray(ReadAtATime, 'A') + longText + "C");
    desk.write("inp/20260731/b", QByteArray(ReadAtATime, 'A') + longText.chopped(1));
    QCOMPARE(found(threeDays(QString::fromLatin1(longText))), QStringList{"inp/20260731/a"});
}

void TestTelegramSearch::largeSparseFileIsReadToItsEnd()
{
    constexpr int FiftyMegabytes = 50 << 20;
    const Desk desk;
    desk.write("inp/20260731/a", "BEGIN");
    QFile file("inp/20260731/a");
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(FiftyMegabytes));
    QCOMPARE(int(file.write("END")), 3);
    file.close();
    QCOMPARE(found(threeDays("BEGIN")).size(), 1);
    QCOMPARE(found(threeDays("END")).size(), 1);
    QCOMPARE(found(threeDays("NOWHERE")).size(), 0);
}

void TestTelegramSearch::fileThatCannotBeOpenedIsLeftOut()
{
    const Desk desk;
    desk.write("inp/20260731/a", "ABC");
    desk.write("inp/20260730/b", "ABC");
    const ReadOnly closed(desk, "inp/20260731", ReadOnly::Refused);
    QVERIFY(!QFile("inp/20260731/a").open(QIODevice::ReadOnly));
    QCOMPARE(found(threeDays("ABC")), QStringList{"inp/20260730/b"});
    QCOMPARE(found(threeDays()), QStringList({"inp/20260730/b", "inp/20260731/a"})); // none is opened
    QCOMPARE(desk.journal(), QStringList());
}

void TestTelegramSearch::whatIsNoOrdinaryFileIsNotOpened()
{
    QFETCH(SpecialFile, kind);
    const QString name = "inp/20260731/20260731u002.002";
    const Desk desk;
    desk.write("inp/20260731/20260731u001.001", "ABC");
    place(desk, kind, name);
    QCOMPARE(found(threeDays("ABC")), QStringList{"inp/20260731/20260731u001.001"});
    QVERIFY(stands(desk, kind, name));
}

void TestTelegramSearch::fileThatGoesMeanwhileIsLeftOut()
{
    const Desk desk;
    for (const char *name : {"inp/20260731/a", "inp/20260731/b", "inp/20260731/c"})
        desk.write(name, "ABC");
    CTelegramSearch search({Today, Today, true, false, "ABC"});
    CTableViewModel_SearchResult result;
    while (search.next(0, result) && result.rowCount() == 0) {
    }
    QFile::remove("inp/20260731/b");
    while (search.next(0, result)) {
    }
    QCOMPARE(paths(result), QStringList({"inp/20260731/a", "inp/20260731/c"}));
}

void TestTelegramSearch::stepsAreSmall()
{
    constexpr int Readings = 8;
    const Desk desk;
    desk.write("inp/20260731/a", QByteArray(Readings * (ReadAtATime - 1), 'A'));
    desk.write("inp/20260731/b", "AB");
    CTelegramSearch search({Today, Today, true, false, "AB"});
    CTableViewModel_SearchResult result;
    int steps = 0;
    for (; result.rowCount() == 0 && steps < 100; ++steps)
        QVERIFY(search.next(0, result));
    QCOMPARE(steps, 1 + Readings + 1); // the listing, the large file, the small one
    QCOMPARE(paths(result), QStringList{"inp/20260731/b"});
}

void TestTelegramSearch::aBudgetOfTimeTakesManySteps()
{
    const Desk desk;
    for (int file = 0; file < 200; ++file)
        desk.write(QStringLiteral("inp/20260731/%1").arg(file), "ABC");
    CTelegramSearch search(threeDays("ABC"));
    CTableViewModel_SearchResult result;
    QSignalSpy inserted(&result, &CTableViewModel_SearchResult::rowsInserted);
    QVERIFY(!search.next(60000, result));
    QCOMPARE(result.rowCount(), 200);
    QCOMPARE(inserted.size(), 1);
}

void TestTelegramSearch::whatWasFoundBeforeTheCancelStays()
{
    const Desk desk;
    for (const char *name : {"inp/20260729/a", "inp/20260730/b", "inp/20260731/c"})
        desk.write(name, QByteArray("ABC") + QByteArray(3 * ReadAtATime, 'A'));
    CTableViewModel_SearchResult result;
    {
        CTelegramSearch search(threeDays("ABC"));
        while (result.rowCount() < 2)
            QVERIFY(search.next(0, result));
    } // the window gives it up
    QCOMPARE(paths(result), QStringList({"inp/20260729/a", "inp/20260730/b"}));
}

void TestTelegramSearch::daysAreCounted()
{
    const Desk desk;
    desk.write("inp/20260730/a", "ABC");
    CTelegramSearch search({Today.addDays(-239), Today, true, true, "ABC"});
    QCOMPARE(search.dayCount(), 240);
    QCOMPARE(search.daysDone(), 0);
    CTableViewModel_SearchResult result;
    while (result.rowCount() == 0)
        QVERIFY(search.next(0, result));
    QCOMPARE(search.daysDone(), 238);
    while (search.next(0, result)) {
    }
    QCOMPARE(search.daysDone(), 240);
}

void TestTelegramSearch::overIsOver()
{
    const Desk desk;
    desk.write("inp/20260731/a", "ABC");
    CTelegramSearch search(threeDays("ABC"));
    CTableViewModel_SearchResult result;
    while (search.next(0, result)) {
    }
    QVERIFY(search.isOver());
    QVERIFY(!search.next(0, result));
    QCOMPARE(result.rowCount(), 1);
}

QTEST_GUILESS_MAIN(TestTelegramSearch)
#include "test_telegram_search.moc"
