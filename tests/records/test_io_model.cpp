#include "tests/records/archive_day.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

namespace
{
CTableViewModelItem_IO item(const QString &fileName, bool isNew = false)
{
    CTableViewModelItem_IO row;
    row.fileName = fileName;
    row.isNew = isNew;
    return row;
}

void fill(CTableViewModel_IO &model, const QStringList &fileNames)
{
    for (const QString &name : fileNames)
        model.append(item(name));
}
} // namespace

/// The table model of a day's files.
class TestIOModel : public QObject
{
    Q_OBJECT

private slots:
    void columnsHaveTitlesAndWidths_data();
    void columnsHaveTitlesAndWidths();
    void headerHasNoMoreThanTheTitles();
    void cellsShowTheFile_data();
    void cellsShowTheFile();
    void controlCharactersOfANameAreShownAsQuestionMarks();
    void newFileIsYellow_data();
    void newFileIsYellow();
    void otherRolesAndPlacesShowNothing();

    void rowsAreAddedChangedRemoved();
    void rowsThatDoNotExistAreIgnored();
    void populateCopiesItsList();
    void modelKeepsTheRulesOfItsKind();

    void knownFileIsOnlyCheckedOff();
    void unknownFileIsAppended();
    void deleteCheckedRemovesInRuns();
    void rowsAreFoundAfterEachKindOfChange();
};

void TestIOModel::columnsHaveTitlesAndWidths_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("width");
    row("time", 0, text("Время"), 8);
    row("file", 1, text("Файл"), 16);
    row("empty", 2, text(""), 10);
}

void TestIOModel::columnsHaveTitlesAndWidths()
{
    QFETCH(int, column);
    const CTableViewModel_IO model;
    QCOMPARE(model.columnCount(), 3);
    QTEST(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), "title");
    QTEST(CTableViewModelItem_IO::columnWidth(column), "width");
}

void TestIOModel::headerHasNoMoreThanTheTitles()
{
    const CTableViewModel_IO model;
    for (const int column : {-1, 3}) {
        QVERIFY(!model.headerData(column, Qt::Horizontal, Qt::DisplayRole).isValid());
        QCOMPARE(CTableViewModelItem_IO::columnWidth(column), 0);
    }
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void TestIOModel::cellsShowTheFile_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("shown");
    row("time", 0, QVariant("09:05:07"));
    row("file", 1, QVariant(text("20260731с001.012")));
    row("empty", 2, QVariant());
}

void TestIOModel::cellsShowTheFile()
{
    QFETCH(int, column);
    QFETCH(QVariant, shown);
    CTableViewModelItem_IO row = item(text("20260731с001.012"));
    row.time = QTime(9, 5, 7, 900);
    CTableViewModel_IO model;
    model.append(row);
    QCOMPARE(model.index(0, column).data(), shown);
    QCOMPARE(model.index(0, column).data(Qt::UserRole), QVariant(text("20260731с001.012")));
}

void TestIOModel::controlCharactersOfANameAreShownAsQuestionMarks()
{
    CTableViewModel_IO model;
    model.append(item("a\nb\1"));
    QCOMPARE(model.index(0, 1).data(), QVariant("a?b?"));
    QCOMPARE(model.index(0, 1).data(Qt::UserRole), QVariant("a\nb\1"));
}

void TestIOModel::newFileIsYellow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<bool>("yellow");
    row("marked", "a", true, true);
    row("suffix", "a_", false, true);
    row("both", "a_", true, true);
    row("neither", "a", false, false);
    row("suffix inside", "a_b", false, false);
}

void TestIOModel::newFileIsYellow()
{
    QFETCH(QString, name);
    QFETCH(bool, marked);
    const Desk desk;
    CTableViewModel_IO model;
    model.append(item(name, marked));
    QTEST(isYellow(model, 0), "yellow");
    for (int column = 0; column < 3; ++column)
        QTEST(model.index(0, column).data(Qt::BackgroundRole).isValid(), "yellow");
}

void TestIOModel::otherRolesAndPlacesShowNothing()
{
    CTableViewModel_IO model;
    model.append(item("a"));
    QVERIFY(!model.index(0, 1).data(Qt::EditRole).isValid());
    QVERIFY(!model.data(QModelIndex()).isValid());
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

void TestIOModel::rowsAreAddedChangedRemoved()
{
    CTableViewModel_IO model;
    fill(model, {"a", "c"});
    model.insertAt(1, item("b"));
    QCOMPARE(names(model), QStringList({"a", "b", "c"}));
    QSignalSpy changed(&model, &CTableViewModel_IO::dataChanged);
    model.update(1, item("x"));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(0).value<QModelIndex>(), model.index(1, 0));
    QCOMPARE(changed.first().at(1).value<QModelIndex>(), model.index(1, 2));
    model.deleteRow(0);
    QCOMPARE(names(model), QStringList({"x", "c"}));
    model.clear();
    QCOMPARE(model.rowCount(), 0);
}

void TestIOModel::rowsThatDoNotExistAreIgnored()
{
    CTableViewModel_IO model;
    model.append(item("a"));
    for (const int row : {-1, 1, 2}) {
        model.update(row, item("x"));
        model.deleteRow(row);
        QVERIFY(!model.clearNew(row));
    }
    model.insertAt(-1, item("x"));
    model.insertAt(2, item("x"));
    QCOMPARE(names(model), QStringList{"a"});
}

void TestIOModel::populateCopiesItsList()
{
    CTableViewModel_IO model;
    fill(model, {"old"});
    QList<CTableViewModelItem_IO> rows{item("a"), item("b")};
    model.populate(&rows);
    rows.clear();
    QCOMPARE(names(model), QStringList({"a", "b"}));
}

void TestIOModel::modelKeepsTheRulesOfItsKind()
{
    CTableViewModel_IO model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(model, {"c", "b", "a"});
    model.insertAt(1, item("d"));
    model.update(0, item("e"));
    model.setChecked();
    model.appendOrCheckDublicate(item("b"));
    model.appendOrCheckDublicate(item("f"));
    model.deleteChecked();
    QCOMPARE(names(model), QStringList({"b", "f"}));
    model.clear();
}

void TestIOModel::knownFileIsOnlyCheckedOff()
{
    CTableViewModelItem_IO first = item("a", true);
    first.N = "007";
    first.time = QTime(9, 0);
    CTableViewModel_IO model;
    model.append(first);
    model.setChecked();
    QVERIFY(model.at(0).checked);
    QSignalSpy changed(&model, &CTableViewModel_IO::dataChanged);
    CTableViewModelItem_IO again = item("a", false);
    again.N = "008";
    again.time = QTime(10, 0);
    model.appendOrCheckDublicate(again);
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(!model.at(0).checked);
    QVERIFY(model.at(0).isNew);
    QCOMPARE(model.at(0).N, QString("007"));
    QCOMPARE(model.at(0).time, QTime(9, 0));
    QCOMPARE(changed.size(), 0);
}

void TestIOModel::unknownFileIsAppended()
{
    CTableViewModel_IO model;
    fill(model, {"b"});
    model.appendOrCheckDublicate(item("a"));
    QCOMPARE(names(model), QStringList({"b", "a"}));
}

void TestIOModel::deleteCheckedRemovesInRuns()
{
    CTableViewModel_IO model;
    fill(model, {"a", "b", "c", "d", "e", "f"});
    model.setChecked();
    model.appendOrCheckDublicate(item("c"));
    model.appendOrCheckDublicate(item("f"));
    QSignalSpy removed(&model, &CTableViewModel_IO::rowsRemoved);
    QSignalSpy reset(&model, &CTableViewModel_IO::modelReset);
    model.deleteChecked();
    QCOMPARE(names(model), QStringList({"c", "f"}));
    QCOMPARE(removed.size(), 2);
    QCOMPARE(removed.at(0).mid(1), QVariantList({3, 4}));
    QCOMPARE(removed.at(1).mid(1), QVariantList({0, 1}));
    QCOMPARE(reset.size(), 0);
}

void TestIOModel::rowsAreFoundAfterEachKindOfChange()
{
    CTableViewModel_IO model;
    const auto finds = [&model](const QString &name, int row) {
        model.setChecked();
        model.appendOrCheckDublicate(item(name));
        return row < model.rowCount() && model.at(row).fileName == name && !model.at(row).checked;
    };
    fill(model, {"b", "c"});
    QVERIFY(finds("c", 1));
    model.append(item("d"));
    QVERIFY(finds("d", 2));
    model.insertAt(0, item("a"));
    QVERIFY(finds("d", 3));
    model.update(3, item("x"));
    QVERIFY(finds("x", 3));
    model.deleteRow(0);
    QVERIFY(finds("x", 2));
    QList<CTableViewModelItem_IO> rows{item("y"), item("z")};
    model.populate(&rows);
    QVERIFY(finds("z", 1));
    model.clear();
    QVERIFY(finds("x", 0)); // appended
    QCOMPARE(model.rowCount(), 1);
}

QTEST_GUILESS_MAIN(TestIOModel)
#include "test_io_model.moc"
