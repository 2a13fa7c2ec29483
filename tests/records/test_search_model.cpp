#include "records/search_model.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QtTest>

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CTableViewModelItem_SearchResult item(const QString &fileName)
{
    CTableViewModelItem_SearchResult row;
    row.date = QDate(2026, 7, 3);
    row.time = QTime(9, 5, 7, 900);
    row.fileName = fileName;
    row.dirPath = QStringLiteral("inp/20260703");
    return row;
}
} // namespace

/// The table model of what a search has found.
class TestSearchModel : public QObject
{
    Q_OBJECT

private slots:
    void columnsHaveTitlesAndWidths_data();
    void columnsHaveTitlesAndWidths();
    void headerHasNoMoreThanTheTitles();
    void cellsShowTheFile_data();
    void cellsShowTheFile();
    void eachRowShowsItsDate();
    void otherRolesAndPlacesShowNothing();
    void pathIsThatOfTheFile();
    void modelKeepsTheRulesOfItsKind();
};

void TestSearchModel::columnsHaveTitlesAndWidths_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("width");
    row("date", 0, text("Дата"), 10);
    row("time", 1, text("Время"), 8);
    row("empty", 2, text(""), 6);
    row("file", 3, text("Файл"), 16);
}

void TestSearchModel::columnsHaveTitlesAndWidths()
{
    QFETCH(int, column);
    const CTableViewModel_SearchResult model;
    QCOMPARE(model.columnCount(), 4);
    QTEST(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), "title");
    QTEST(CTableViewModel_SearchResult::columnWidth(column), "width");
}

void TestSearchModel::headerHasNoMoreThanTheTitles()
{
    const CTableViewModel_SearchResult model;
    for (const int column : {-1, 4}) {
        QVERIFY(!model.headerData(column, Qt::Horizontal, Qt::DisplayRole).isValid());
        QCOMPARE(CTableViewModel_SearchResult::columnWidth(column), 0);
    }
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void TestSearchModel::cellsShowTheFile_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("shown");
    row("date", 0, QVariant("03.07.2026"));
    row("time", 1, QVariant("09:05:07"));
    row("empty", 2, QVariant());
    row("file", 3, QVariant("a?b"));
}

void TestSearchModel::cellsShowTheFile()
{
    QFETCH(int, column);
    QFETCH(QVariant, shown);
    CTableViewModel_SearchResult model;
    model.append(item("a\nb"));
    QCOMPARE(model.index(0, column).data(), shown);
    QCOMPARE(model.index(0, column).data(Qt::UserRole), QVariant("a\nb"));
}

void TestSearchModel::eachRowShowsItsDate()
{
    CTableViewModel_SearchResult model;
    CTableViewModelItem_SearchResult first = item("a");
    first.firstInDirectory = true;
    model.append(QList<CTableViewModelItem_SearchResult>{first, item("b")});
    QCOMPARE(model.index(0, 0).data(), model.index(1, 0).data());
    QVERIFY(!model.index(0, 0).data(Qt::BackgroundRole).isValid());
}

void TestSearchModel::otherRolesAndPlacesShowNothing()
{
    CTableViewModel_SearchResult model;
    model.append(item("a"));
    QVERIFY(!model.index(0, 0).data(Qt::EditRole).isValid());
    QVERIFY(!model.data(QModelIndex()).isValid());
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

void TestSearchModel::pathIsThatOfTheFile()
{
    CTableViewModel_SearchResult model;
    model.append(item("a"));
    QCOMPARE(model.pathAt(0), QStringLiteral("inp/20260703") + QDir::separator() + "a");
}

void TestSearchModel::modelKeepsTheRulesOfItsKind()
{
    CTableViewModel_SearchResult model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.append(item("a"));
    model.append(item("a")); // of another directory
    model.append(QList<CTableViewModelItem_SearchResult>{item("b"), item("c")});
    model.append(QList<CTableViewModelItem_SearchResult>());
    model.insertAt(1, item("d"));
    model.update(0, item("e"));
    model.deleteRow(1);
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.at(0).fileName, QString("e"));
    QList<CTableViewModelItem_SearchResult> rows{item("x")};
    model.populate(&rows);
    QCOMPARE(model.rowCount(), 1);
    model.clear();
    QCOMPARE(model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestSearchModel)
#include "test_search_model.moc"
