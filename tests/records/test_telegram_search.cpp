#include "app/options.h"
#include "records/telegram_search.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QtTest>

namespace
{

const QDate Today(2026, 7, 31);

CTelegramSearch::Request everything(const QString &searched = QString())
{
    return {Today.addDays(-2), Today, true, true, searched};
}

/// What a search finds, "directory/name" below the data directory.
QStringList found(const CTelegramSearch::Request &request)
{
    CTelegramSearch search(request);
    CTableViewModel_SearchResult result;
    while (search.next(0, result)) {
    }
    QStringList paths;
    for (int row = 0; row < result.rowCount(); ++row)
        paths << QDir::current().relativeFilePath(result.pathAt(row));
    return paths;
}
} // namespace

/// The search for telegrams of a range of days.
class TestTelegramSearch : public QObject
{
    Q_OBJECT

private slots:
    void daysAreLookedAtInOrderIncomingFirst();
    void emptyTextListsAllFilesOfTheRange();
};

void TestTelegramSearch::daysAreLookedAtInOrderIncomingFirst()
{
    const Desk desk;
    for (const char *name : {"inp/20260730/b", "out/20260730/a", "inp/20260731/a", "out/20260731/b",
                             "out/20260728/x", "inp/20260801/x", "inp/20260730/a"})
        desk.write(name, "ABC");
    QCOMPARE(found(everything("B")), QStringList({"inp/20260730/a", "inp/20260730/b", "out/20260730/a",
                                                 "inp/20260731/a", "out/20260731/b"}));
}

void TestTelegramSearch::emptyTextListsAllFilesOfTheRange()
{
    const Desk desk;
    for (const char *name : {"inp/20260728/x", "inp/20260729/a", "out/20260731/b", "out/20260801/x"})
        desk.write(name, "");
    QCOMPARE(found(everything()), QStringList({"inp/20260729/a", "out/20260731/b"}));
}

QTEST_GUILESS_MAIN(TestTelegramSearch)
#include "test_telegram_search.moc"
