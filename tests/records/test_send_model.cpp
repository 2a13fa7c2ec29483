#include "app/options.h"
#include "records/send_model.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CTableViewModelItem_Send item(const QString &fileName)
{
    CTableViewModelItem_Send row;
    row.fileName = fileName;
    return row;
}

QStringList names(const CTableViewModel_Send &model)
{
    QStringList found;
    for (int row = 0; row < model.rowCount(); ++row)
        found << model.index(row, 0).data(Qt::UserRole).toString();
    return found;
}

void fill(CTableViewModel_Send &model, const QStringList &fileNames)
{
    for (const QString &name : fileNames)
        model.append(item(name));
}
} // namespace

/// The table models of the queue.
class TestSendModel : public QObject
{
    Q_OBJECT

private slots:
    void tableHasABlockForEachProcedure_data();
    void tableHasABlockForEachProcedure();
    void unknownProcedureHasTheTableOfTheDirectLink();
    void headerOfTheFailedListDiffersInItsFirstColumn_data();
    void headerOfTheFailedListDiffersInItsFirstColumn();
    void headerHasNoMoreThanTheTitles();
    void cellsShowTheRecord_data();
    void cellsShowTheRecord();
    void otherRolesAndPlacesShowNothing();

    void rowsAreAddedChangedRemoved();
    void rowsThatDoNotExistAreIgnored();
    void populateCopiesItsList();
    void modelKeepsTheRulesOfItsKind();

    void unCheckItemFindsTheSameFile();
    void updateCopiesOverEachRowOfTheFile();
    void updateReportsAllColumnsOfTheRow_data();
    void updateReportsAllColumnsOfTheRow();
    void deleteCheckedRemovesWhatWasNotSeen();
    void rowsAreFoundAfterEachKindOfChange();
};

void TestSendModel::tableHasABlockForEachProcedure_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<int>>("widths");
    QTest::addColumn<QStringList>("titles");
    const QStringList two{text("Файл"), "-"};
    row("CKS", 0, 20, QList<int>{17, 8}, two);
    row("SKK", 1, 40, QList<int>{17, 2, 9, 9, 16, 50},
        QStringList{text("Файл"), "-", text("Абонент"), text("Попыток"), text("Время начала"),
                    text("Информация")});
    row("direct", 2, 20, QList<int>{27, 8}, two);
}

void TestSendModel::tableHasABlockForEachProcedure()
{
    QFETCH(int, mode);
    QFETCH(int, width);
    QFETCH(QList<int>, widths);
    QFETCH(QStringList, titles);
    Desk desk;
    Options.processMode = mode;
    const auto &table = CTableViewModelItem_Send::tableData[mode];
    QCOMPARE(&CTableViewModelItem_Send::currentTable(), &table);
    QCOMPARE(table.width, width);
    QCOMPARE(table.columns, widths.size());
    CTableViewModel_Send model;
    QCOMPARE(model.columnCount(), widths.size());
    for (int column = 0; column < widths.size(); ++column) {
        QCOMPARE(table.columnWidth[column], widths.at(column));
        QCOMPARE(table.title[column], titles.at(column));
        QCOMPARE(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), titles.at(column));
    }
}

void TestSendModel::unknownProcedureHasTheTableOfTheDirectLink()
{
    Desk desk;
    for (const int mode : {-1, 3, 1000}) {
        Options.processMode = mode;
        QCOMPARE(&CTableViewModelItem_Send::currentTable(), &CTableViewModelItem_Send::tableData[2]);
    }
}

void TestSendModel::headerOfTheFailedListDiffersInItsFirstColumn_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0, 1, 2})
        QTest::addRow("processMode %d", mode) << mode;
}

void TestSendModel::headerOfTheFailedListDiffersInItsFirstColumn()
{
    QFETCH(int, mode);
    Desk desk;
    Options.processMode = mode;
    CTableViewModel_Send good;
    CTableViewModel_SendBad bad;
    QCOMPARE(bad.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), text("Неудачные"));
    for (int column = 1; column < good.columnCount(); ++column)
        QCOMPARE(bad.headerData(column, Qt::Horizontal, Qt::DisplayRole),
                 good.headerData(column, Qt::Horizontal, Qt::DisplayRole));
}

void TestSendModel::headerHasNoMoreThanTheTitles()
{
    Desk desk;
    Options.processMode = 0;
    CTableViewModel_SendBad model;
    QVERIFY(!model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(-1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void TestSendModel::cellsShowTheRecord_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("shown");
    row("file", 0, QVariant("20260731u001"));
    row("dash", 1, QVariant());
    row("number", 2, QVariant("1234567"));
    row("tries", 3, QVariant(2));
    row("time", 4, QVariant("01.08.2026 09:05"));
    row("result", 5, QVariant(text("НЕТ ОТВЕТА")));
}

void TestSendModel::cellsShowTheRecord()
{
    QFETCH(int, column);
    QFETCH(QVariant, shown);
    Desk desk;
    CTableViewModelItem_Send row = item("20260731u001");
    row.number = "1234567";
    row.trys = 2;
    row.sendTime = QDateTime(QDate(2026, 8, 1), QTime(9, 5, 30));
    row.resultText = text("НЕТ ОТВЕТА");
    CTableViewModel_Send model;
    model.append(row);
    QCOMPARE(model.index(0, column).data(), shown);
    QCOMPARE(model.index(0, column).data(Qt::UserRole), QVariant("20260731u001"));
}

void TestSendModel::otherRolesAndPlacesShowNothing()
{
    Desk desk;
    CTableViewModel_Send model;
    model.append(item("a"));
    QVERIFY(!model.index(0, 0).data(Qt::EditRole).isValid());
    QVERIFY(!model.data(QModelIndex()).isValid());
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

void TestSendModel::rowsAreAddedChangedRemoved()
{
    Desk desk;
    CTableViewModel_Send model;
    fill(model, {"a", "c"});
    model.insertAt(1, item("b"));
    QCOMPARE(names(model), QStringList({"a", "b", "c"}));
    model.update(1, item("x"));
    QCOMPARE(names(model), QStringList({"a", "x", "c"}));
    model.deleteRow(0);
    QCOMPARE(names(model), QStringList({"x", "c"}));
    QCOMPARE(model.at(1).fileName, QString("c"));
    model.clear();
    QCOMPARE(model.rowCount(), 0);
}

void TestSendModel::rowsThatDoNotExistAreIgnored()
{
    Desk desk;
    CTableViewModel_Send model;
    model.append(item("a"));
    for (const int row : {-1, 1, 2}) {
        model.update(row, item("x"));
        model.deleteRow(row);
    }
    model.insertAt(-1, item("x"));
    model.insertAt(2, item("x"));
    QCOMPARE(names(model), QStringList{"a"});
}

void TestSendModel::populateCopiesItsList()
{
    Desk desk;
    CTableViewModel_Send model;
    fill(model, {"old"});
    QList<CTableViewModelItem_Send> rows{item("a"), item("b")};
    model.populate(&rows);
    rows.clear();
    QCOMPARE(names(model), QStringList({"a", "b"}));
}

void TestSendModel::modelKeepsTheRulesOfItsKind()
{
    Desk desk;
    CTableViewModel_Send model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(model, {"c", "b", "a"});
    model.at(2).number = "1";
    model.insertAt(1, item("d"));
    model.update(item("b"));
    model.sortValues();
    model.setChecked();
    model.unCheckItem(item("b"));
    model.deleteChecked();
    QCOMPARE(names(model), QStringList{"b"});
    model.clear();
}

void TestSendModel::unCheckItemFindsTheSameFile()
{
    Desk desk;
    CTableViewModel_Send model;
    QVERIFY(!model.unCheckItem(item("a")));
    fill(model, {"a", "b", "a"});
    model.setChecked();
    QVERIFY(model.at(0).checked && model.at(1).checked && model.at(2).checked);
    QVERIFY(model.unCheckItem(item("a")));
    QVERIFY(!model.at(0).checked);
    QVERIFY(model.at(1).checked);
    QVERIFY(model.at(2).checked); // the first one alone
    QVERIFY(!model.unCheckItem(item("A")));
}

void TestSendModel::updateCopiesOverEachRowOfTheFile()
{
    Desk desk;
    CTableViewModel_Send model;
    fill(model, {"a", "b", "a"});
    CTableViewModelItem_Send fresh = item("a");
    fresh.trys = 7;
    model.update(fresh);
    QCOMPARE(model.at(0).trys, 7);
    QCOMPARE(model.at(1).trys, 0);
    QCOMPARE(model.at(2).trys, 7);
    fresh.fileName = "none";
    model.update(fresh);
    QCOMPARE(names(model), QStringList({"a", "b", "a"}));
}

void TestSendModel::updateReportsAllColumnsOfTheRow_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("lastColumn");
    row("CKS", 0, 1);
    row("SKK", 1, 5);
    row("direct", 2, 1);
}

void TestSendModel::updateReportsAllColumnsOfTheRow()
{
    QFETCH(int, mode);
    QFETCH(int, lastColumn);
    Desk desk;
    Options.processMode = mode;
    CTableViewModel_Send model;
    fill(model, {"a", "b"});
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.update(item("b"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(1, 0));
    QCOMPARE(changed.at(0).at(1).toModelIndex(), model.index(1, lastColumn));
}

void TestSendModel::deleteCheckedRemovesWhatWasNotSeen()
{
    Desk desk;
    CTableViewModel_Send model;
    fill(model, {"a", "b", "c", "d"});
    model.setChecked();
    model.unCheckItem(item("b"));
    model.unCheckItem(item("d"));
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    model.deleteChecked();
    QCOMPARE(names(model), QStringList({"b", "d"}));
    QCOMPARE(removed.count(), 2);
    model.deleteChecked();
    QCOMPARE(names(model), QStringList({"b", "d"}));
}

void TestSendModel::rowsAreFoundAfterEachKindOfChange()
{
    Desk desk;
    Options.processMode = 2;
    CTableViewModel_Send model;
    fill(model, {"a", "b"});
    QVERIFY(model.unCheckItem(item("b")));
    model.append(item("c"));
    QVERIFY(model.unCheckItem(item("c")));
    model.insertAt(0, item("d"));
    model.setChecked();
    QVERIFY(model.unCheckItem(item("d")));
    QVERIFY(!model.at(0).checked);
    model.deleteRow(0);
    QVERIFY(!model.unCheckItem(item("d")));
    model.update(0, item("e"));
    QVERIFY(!model.unCheckItem(item("a")));
    QVERIFY(model.unCheckItem(item("e")));
    model.at(0).sendTime = QDateTime(QDate(2026, 1, 2), QTime(0, 0));
    model.at(1).sendTime = QDateTime(QDate(2026, 1, 1), QTime(0, 0));
    model.sortValues();
    model.setChecked();
    QVERIFY(model.unCheckItem(item("e")));
    QVERIFY(!model.at(names(model).indexOf("e")).checked);
    QList<CTableViewModelItem_Send> rows{item("x")};
    model.populate(&rows);
    QVERIFY(!model.unCheckItem(item("e")));
    QVERIFY(model.unCheckItem(item("x")));
    model.clear();
    QVERIFY(!model.unCheckItem(item("x")));
}

QTEST_GUILESS_MAIN(TestSendModel)
#include "test_send_model.moc"
