// The tables of subscribers and of their lists, as models.

#include "records/abonents.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

class TestAbonents : public QObject
{
    Q_OBJECT

private slots:
    void columnsHaveTheirTitlesAndWidths();
    void subscriberShowsItsFourFields();
    void listShowsItsNumbersInOneCell();
    void subscriberCarriesItsMarkByRoleNine();
    void listCarriesItsMarkAsACheckState();
    void populateReplacesAllRows();
    void rowsAreInsertedUpdatedAndDeleted();
    void rowThatDoesNotExistIsIgnored();
    void markedRowsAreDeleted();
    void sameRecordLosesItsMark();
    void otherRecordIsAppended_data();
    void otherRecordIsAppended();
    void reloadDoesNothing();
};

namespace
{
using Abonent = CTableViewModelItem_Abonents;
using AbonentList = CTableViewModelItem_AbonentLists;

const Abonent ivanov(CAbonent{"Иванов", "П", "123456", "до 18"});
const Abonent petrov(CAbonent{"Петров", "С", "234567", ""});
const AbonentList everybody(CAbonentList{"Все", {"123456", "234567"}, "прим"});

/// The names, from the first row to the last.
QString names(const QAbstractItemModel &model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row)
        all << model.index(row, 0).data().toString();
    return all.join('/');
}

QString texts(const QAbstractItemModel &model, int row)
{
    QStringList all;
    for (int column = 0; column < model.columnCount(); ++column)
        all << model.index(row, column).data().toString();
    return all.join('|');
}

template <class Model> void checkShape()
{
    const Model model;
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column)
        titles << model.headerData(column, Qt::Horizontal).toString();
    QCOMPARE(titles, (QStringList{"Наименование", "Категория", "Номер", "Примечание"}));
    QVERIFY(!model.headerData(4, Qt::Horizontal).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical).isValid());
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::UserRole).isValid());
}

template <class Item> void checkWidths()
{
    QList<int> widths;
    for (int column = -1; column <= 4; ++column)
        widths << Item::columnWidth(column);
    QCOMPARE(widths, (QList<int>{0, 30, 20, 20, 60, 0}));
}
} // namespace

void TestAbonents::columnsHaveTheirTitlesAndWidths()
{
    checkShape<CTableViewModel_Abonents>();
    checkShape<CTableViewModel_AbonentLists>();
    checkWidths<Abonent>();
    checkWidths<AbonentList>();
}

void TestAbonents::subscriberShowsItsFourFields()
{
    CTableViewModel_Abonents model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.append(ivanov);
    QCOMPARE(texts(model, 0), QString("Иванов|П|123456|до 18"));
    QVERIFY(!model.data(model.index(1, 0)).isValid());
}

void TestAbonents::listShowsItsNumbersInOneCell()
{
    CTableViewModel_AbonentLists model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.append(everybody);
    model.append(AbonentList(CAbonentList{"Пусто", {}, ""}));
    QCOMPARE(texts(model, 0), QString("Все||123456,234567|прим"));
    QCOMPARE(texts(model, 1), QString("Пусто|||"));
}

void TestAbonents::subscriberCarriesItsMarkByRoleNine()
{
    CTableViewModel_Abonents model;
    model.append(ivanov);
    QCOMPARE(model.index(0, 2).data(9), QVariant(int(Qt::Unchecked)));
    model.setChecked();
    QCOMPARE(model.index(0, 2).data(9), QVariant(int(Qt::Checked)));
    QVERIFY(!model.index(0, 2).data(Qt::CheckStateRole).isValid());
    for (int column : {0, 1, 3})
        QVERIFY(!model.index(0, column).data(9).isValid());
}

void TestAbonents::listCarriesItsMarkAsACheckState()
{
    CTableViewModel_AbonentLists model;
    model.append(everybody);
    QCOMPARE(model.index(0, 2).data(Qt::CheckStateRole), QVariant(int(Qt::Unchecked)));
    model.setChecked();
    QCOMPARE(model.index(0, 2).data(Qt::CheckStateRole), QVariant(int(Qt::Checked)));
    QVERIFY(!model.index(0, 1).data(Qt::CheckStateRole).isValid());
}

void TestAbonents::populateReplacesAllRows()
{
    CTableViewModel_Abonents model;
    model.append(ivanov);
    QList<Abonent> rows{petrov, ivanov};
    model.populate(&rows);
    QCOMPARE(names(model), QString("Петров/Иванов"));
    model.clear();
    QCOMPARE(model.rowCount(), 0);
}

void TestAbonents::rowsAreInsertedUpdatedAndDeleted()
{
    CTableViewModel_Abonents model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.append(ivanov);
    model.insertAt(0, petrov);
    QCOMPARE(names(model), QString("Петров/Иванов"));
    model.update(1, Abonent(CAbonent{"Сидоров", "", "", ""}));
    QCOMPARE(names(model), QString("Петров/Сидоров"));
    model.deleteRow(0);
    QCOMPARE(names(model), QString("Сидоров"));
}

void TestAbonents::rowThatDoesNotExistIsIgnored()
{
    CTableViewModel_Abonents model;
    model.append(ivanov);
    model.insertAt(5, petrov);
    model.update(-1, petrov);
    model.update(1, petrov);
    model.deleteRow(-1);
    model.deleteRow(1);
    QCOMPARE(names(model), QString("Иванов"));
}

void TestAbonents::markedRowsAreDeleted()
{
    CTableViewModel_Abonents model;
    model.append(ivanov);
    model.append(petrov);
    model.setChecked();
    model.append(Abonent(CAbonent{"Сидоров", "", "", ""}));
    model.appendOrCheckDublicate(ivanov);
    model.deleteChecked();
    QCOMPARE(names(model), QString("Иванов/Сидоров"));
}

void TestAbonents::sameRecordLosesItsMark()
{
    CTableViewModel_AbonentLists model;
    model.append(everybody);
    model.setChecked();
    model.appendOrCheckDublicate(everybody);
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(!model.at(0).checked);
}

void TestAbonents::otherRecordIsAppended_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("name") << QStringList{"Иванова", "П", "123456", "до 18"};
    QTest::addRow("category") << QStringList{"Иванов", "С", "123456", "до 18"};
    QTest::addRow("number") << QStringList{"Иванов", "П", "123457", "до 18"};
    QTest::addRow("note") << QStringList{"Иванов", "П", "123456", ""};
}

void TestAbonents::otherRecordIsAppended()
{
    QFETCH(QStringList, fields);
    CTableViewModel_Abonents model;
    model.append(ivanov);
    model.setChecked();
    model.appendOrCheckDublicate(Abonent(CAbonent{fields[0], fields[1], fields[2], fields[3]}));
    QCOMPARE(model.rowCount(), 2);
    QVERIFY(model.at(0).checked);
    QVERIFY(!model.at(1).checked);
}

void TestAbonents::reloadDoesNothing()
{
    CTableViewModel_Abonents model;
    model.append(ivanov);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.reloadFromDir();
    QCOMPARE(names(model), QString("Иванов"));
    QCOMPARE(reset.count(), 0);
}

QTEST_GUILESS_MAIN(TestAbonents)
#include "test_abonents.moc"
