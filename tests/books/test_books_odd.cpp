// Books in an odd state, requests that cannot be met, and that nothing is ever written.

#include "book_day.h"

#include "data_directory.h"
#include "day_books.h"

#include <QDirIterator>
#include <QtTest>

#include <thread>

class TestBooksOdd : public QObject
{
    Q_OBJECT

private slots:
    void halfALineAtTheEndIsNoDamage();
    void lineOfAnotherEncodingIsNamed();
    void zeroBytesAreNamed();
    void unknownLinesAreNothing();
    void journalOfTwentyMegabytesIsRead();
    void telegramThatIsOnlyComingIsNoDisagreement();
    void disagreementThatHealsMeanwhileIsNone();
    void disagreementThatStaysHoldsOnASecondLook();
    void nothingIsWritten();
    void requestThatCannotBeMetIsRefused_data();
    void requestThatCannotBeMetIsRefused();
    void helpIsPrinted();
};

namespace
{
/// Every file and directory below \a root with its size, its time of change and its content.
QStringList snapshot(const QString &root)
{
    QStringList found;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        QFile file(it.filePath());
        const bool isFile = it.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
        const QByteArray content = isFile ? file.readAll().toHex() : QByteArray("directory");
        found << it.filePath() + ' ' + it.fileInfo().lastModified().toString(Qt::ISODateWithMs) + ' ' +
                     content;
    }
    found.sort();
    return found;
}
} // namespace

void TestBooksOdd::halfALineAtTheEndIsNoDamage()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QFile journal(day.path("prt/20261122.prt"));
    QVERIFY(journal.open(QIODevice::Append));
    journal.write("\x03"
                  "12:00:01 \xd0\x97\xd0"); // the second letter is cut in two
    journal.close();
    QCOMPARE(day.disagreements(), QStringList());
    QCOMPARE(day.status, 0);
}

void TestBooksOdd::lineOfAnotherEncodingIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QFile journal(day.path("prt/20261122.prt"));
    QVERIFY(journal.open(QIODevice::Append));
    journal.write("\x03"
                  "12:00:01 \xc2\xfb\xf5\xee\xe4\n"
                  "\x03"
                  "12:00:02 \n"); // Windows-1251
    journal.close();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:32: строка протокола повреждена: не UTF-8 или нулевые байты"));
    QCOMPARE(day.status, 1);
}

void TestBooksOdd::zeroBytesAreNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QFile journal(day.path("prt/20261122.prt"));
    QVERIFY(journal.open(QIODevice::Append));
    journal.write(QByteArray(20, '\0') + "\n");
    journal.close();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:32: строка протокола повреждена: не UTF-8 или нулевые байты"));
}

void TestBooksOdd::unknownLinesAreNothing()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.info("12:00:01 Пришло время обеда");
    day.info("25:99:00 Отправка файла: 20261122u001");
    day.sent("ПРОСТО ТЕКСТ");
    day.received("ЗЦЗЦ БЕЗ КОНЦА");
    day.writeJournal();
    QCOMPARE(day.disagreements(), QStringList());
    QCOMPARE(day.status, 0);
}

void TestBooksOdd::journalOfTwentyMegabytesIsRead()
{
    BookDay day;
    BookDay::fillCentre(day);
    for (int i = 0; i < 200000; ++i) // of 100 bytes and more
        day.received(QStringLiteral("ШУМ ЛИНИИ БЕЗ ВСЯКОГО СМЫСЛА %1 И ДАЛЬШЕ В ТОМ ЖЕ РОДЕ<>").arg(i));
    day.writeJournal();
    QVERIFY(QFileInfo(day.path("prt/20261122.prt")).size() > 20 * 1000 * 1000);
    QCOMPARE(day.disagreements(), QStringList());
    QCOMPARE(day.status, 0);
}

void TestBooksOdd::telegramThatIsOnlyComingIsNoDisagreement()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ 003 П03 221200 12<>");
    day.received("НННН  ");
    day.writeJournal();
    day.write("velda.lck", "1234\nvelda\nhost\n");
    QVERIFY(day.books().contains("Замечания: 1\n  20261122.prt:31: телеграмма 003 еще принимается\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksOdd::disagreementThatHealsMeanwhileIsNone()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("velda.lck", "1234\nvelda\nhost\n");
    const QString stored = day.path("inp/20261122/20261122u000.002");
    QVERIFY(QFile::rename(stored, stored + ".velda-12345678"));
    const CDataDirectory directory(day.path());
    CDayBooks books(directory);
    books.pauseMilliseconds = 20;
    books.looks = 3000;
    std::thread workstation([&stored] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        (void)QFile::rename(stored + ".velda-12345678", stored);
    });
    const CDayReport report = books.report(QDate(2026, 11, 22));
    workstation.join();
    QVERIFY(report.agrees());
    QCOMPARE(report.received.files, 2);
}

void TestBooksOdd::disagreementThatStaysHoldsOnASecondLook()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("velda.lck", "1234\nvelda\nhost\n");
    day.counters(2, 5);
    const CDataDirectory directory(day.path());
    CDayBooks books(directory);
    books.pauseMilliseconds = 1;
    const CDayReport report = books.report(QDate(2026, 11, 22));
    QCOMPARE(report.disagreements.size(), 1);
    QCOMPARE(report.disagreements.first().what, QString("счетчик переданных 5, а по книгам 2"));
}

void TestBooksOdd::nothingIsWritten()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("out/20261122u005", "ЖДЕТ");
    day.write("out/20261122u005.dat", "|C|22.11.2026 13:00|u|1|N|");
    const QStringList before = snapshot(day.path());
    const auto locked = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    for (const char *name : {"", "prt", "inp", "out", "inp/20261122", "out/20261122"})
        QVERIFY(QFile::setPermissions(day.path(name), locked));
    QTemporaryDir elsewhere;
    (void)day.books();
    (void)day.books({"20261122", "--csv"});
    (void)day.books({"20261122..20261122", "--html", elsewhere.filePath("page.html")});
    QCOMPARE(day.status, 0);
    QVERIFY(QFile::exists(elsewhere.filePath("page.html")));
    QCOMPARE(snapshot(day.path()), before);
    for (const char *name : {"", "prt", "inp", "out", "inp/20261122", "out/20261122"})
        QVERIFY(QFile::setPermissions(day.path(name), locked | QFile::WriteOwner));
}

void TestBooksOdd::requestThatCannotBeMetIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments"); // behind the directory
    QTest::addColumn<QString>("first");         // line of the errors; DIR stands for the directory
    QTest::newRow("day without books")
        << QStringList("20260101") << "за эти дни нет ни протокола, ни телеграмм";
    QTest::newRow("no date") << QStringList("22.11.2026")
                             << "не дата: 22.11.2026 (надо 20261122, 2026-11-22 или две даты через ..)";
    QTest::newRow("no such day") << QStringList("20260230")
                                 << "не дата: 20260230 (надо 20261122, 2026-11-22 или две даты через ..)";
    QTest::newRow("range backwards") << QStringList("20261122..20261101")
                                     << "конец раньше начала: 20261122..20261101";
    QTest::newRow("unknown option") << QStringList("--json") << "неизвестный ключ: --json";
    QTest::newRow("no page") << QStringList("--html") << "не указан файл для --html";
    QTest::newRow("two forms") << QStringList({"--csv", "--html", "/tmp/x"})
                               << "--csv и --html вместе не задаются";
    QTest::newRow("too many words") << QStringList({"20261122", "20261123"}) << "лишнее слово: 20261123";
    QTest::newRow("page into the directory") << QStringList({"--html", "DIR/out/page.html"})
                                             << "в каталог данных ничего не записывается: DIR/out/page.html";
    QTest::newRow("page nowhere") << QStringList({"--html", "/nonexistent/page.html"})
                                  << "не удалось записать /nonexistent/page.html";
}

void TestBooksOdd::requestThatCannotBeMetIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, first);
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    arguments.replaceInStrings("DIR", day.path());
    QCOMPARE(day.books(arguments), QString());
    QCOMPARE(day.status, 2);
    QCOMPARE(day.errors.section('\n', 0, 0), "velda-books: " + first.replace("DIR", day.path()));
    QCOMPARE(QDir(day.path("out")).entryList(QDir::Files), QStringList());
}

void TestBooksOdd::helpIsPrinted()
{
    BookDay day;
    QVERIFY(day.books({"--help"}).startsWith("Использование: velda-books КАТАЛОГ [ДАТА | С..ПО]"));
    QCOMPARE(day.status, 0);
    // What is no workstation's directory
    QVERIFY(QDir().rmdir(day.path("prt")) && QDir(day.path("inp")).removeRecursively());
    QCOMPARE(day.books(), QString());
    QCOMPARE(day.errors, "velda-books: это не каталог данных рабочего места: " + day.path() + '\n');
    QCOMPARE(day.status, 2);
    day.write("prt/20261122.prt/inside", "A DIRECTORY");
    QCOMPARE(day.books(), QString());
    QCOMPARE(day.errors, "velda-books: протокол не читается: " + day.path("prt/20261122.prt") + '\n');
}

QTEST_GUILESS_MAIN(TestBooksOdd)
#include "test_books_odd.moc"
