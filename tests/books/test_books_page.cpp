// The page for the printer: well-formed, one file, with a picture that has the day's figures.

#include "book_day.h"

#include <QXmlStreamReader>
#include <QtTest>

class TestBooksPage : public QObject
{
    Q_OBJECT

private slots:
    void pageIsWellFormedAndNeedsNothingElse();
    void pictureHasAColumnForEachHourOfTraffic();
    void namesFromTheDiskCannotBreakThePage();
    void bracketsAndControlsInNamesCannotBreakThePage();
};

namespace
{
/// The page of \a day; fails the test if it is not well-formed.
QByteArray pageOf(BookDay &day, const QTemporaryDir &elsewhere)
{
    const QString path = elsewhere.filePath("page.html");
    (void)day.books({"--html", path});
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

/// What stands wrong in \a page; empty if it is well-formed.
QString faultIn(const QByteArray &page)
{
    QXmlStreamReader reader(page);
    while (!reader.atEnd())
        reader.readNext();
    return reader.errorString();
}

/// The titles of the picture's rectangles.
QStringList titlesIn(const QByteArray &page)
{
    QStringList titles;
    QXmlStreamReader reader(page);
    while (!reader.atEnd())
        if (reader.readNextStartElement() || reader.isStartElement())
            if (reader.name() == QLatin1String("title"))
                titles << reader.readElementText();
    return titles;
}
} // namespace

void TestBooksPage::pageIsWellFormedAndNeedsNothingElse()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QTemporaryDir elsewhere;
    const QByteArray page = pageOf(day, elsewhere);
    QCOMPARE(day.status, 0);
    QCOMPARE(faultIn(page), QString());
    QVERIFY(page.startsWith("<!DOCTYPE html>\n<html lang=\"ru\">"));
    QVERIFY(QString::fromUtf8(page).contains("Книги за 22.11.2026 (ЦКС): сходятся"));
    QVERIFY(page.contains("size: A4"));
    QVERIFY(!page.contains("src=") && !page.contains("href=") && !page.contains("url("));
}

void TestBooksPage::pictureHasAColumnForEachHourOfTraffic()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QTemporaryDir elsewhere;
    const QStringList titles = titlesIn(pageOf(day, elsewhere));
    QCOMPARE(titles.filter("принято 1"), QStringList({"9:00 принято 1", "11:00 принято 1"}));
    QCOMPARE(titles.filter("передано 1"), QStringList({"9:00 передано 1", "11:00 передано 1"}));
    QCOMPARE(titles.filter("10:00:00"), QStringList("10:00:00–10:01:00, 1 мин 0 с"));
}

void TestBooksPage::namesFromTheDiskCannotBreakThePage()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("inp/20261122/a&amp;'.003", "ПОДЛОЖЕНО"); // every system takes this name
    QTemporaryDir elsewhere;
    const QByteArray page = pageOf(day, elsewhere);
    QCOMPARE(day.status, 1);
    QCOMPARE(faultIn(page), QString());
    QVERIFY(page.contains("a&amp;amp;"));
}

void TestBooksPage::bracketsAndControlsInNamesCannotBreakThePage()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("inp/20261122/<b>&\"'.003", "ПОДЛОЖЕНО");
    day.write("inp/20261122/\x01\x02", "ПОДЛОЖЕНО");
    QTemporaryDir elsewhere;
    const QByteArray page = pageOf(day, elsewhere);
    QCOMPARE(day.status, 1);
    QCOMPARE(faultIn(page), QString());
    QVERIFY(page.contains("&lt;b&gt;&amp;"));
}

QTEST_GUILESS_MAIN(TestBooksPage)
#include "test_books_page.moc"
