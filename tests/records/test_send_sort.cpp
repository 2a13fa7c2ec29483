#include "app/options.h"
#include "records/send_model.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{
/// "name number tries minute", with "-" for no number and a "!" behind the name of a bad one.
CTableViewModelItem_Send queueRow(const QString &description)
{
    const QStringList words = description.split(' ');
    CTableViewModelItem_Send item;
    item.fileName = words.value(0);
    item.bad = item.fileName.endsWith('!');
    item.number = words.value(1) == "-" ? QString() : words.value(1);
    item.trys = words.value(2).toInt();
    if (words.size() > 3)
        item.sendTime = QDateTime(QDate(2026, 7, 31), QTime(12, words.at(3).toInt()));
    return item;
}

QStringList names(const CTableViewModel_Send &model)
{
    QStringList found;
    for (int place = 0; place < model.rowCount(); ++place)
        found << model.index(place, 0).data().toString();
    return found;
}

QStringList sorted(int mode, const QStringList &rows)
{
    Desk desk;
    Options.processMode = mode;
    CTableViewModel_Send model;
    for (const QString &description : rows)
        model.append(queueRow(description));
    model.sortValues();
    return names(model);
}

void columns()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QStringList>("expected");
}
} // namespace

/// The order in which the queue is sent.
class TestSendSort : public QObject
{
    Q_OBJECT

private slots:
    void centreStandsFirstInCKS_data();
    void centreStandsFirstInCKS();
    void subscribersStandFirstByTimeInSKK_data();
    void subscribersStandFirstByTimeInSKK();
    void earliestTimeStandsFirstOnTheDirectLink_data();
    void earliestTimeStandsFirstOnTheDirectLink();
    void unknownProcedureSortsAsTheDirectLink();
    void sortedRowsAreNotMoved();
    void movedRowKeepsItsSelection();
    void emptyListAndOneRowStay();
};

void TestSendSort::centreStandsFirstInCKS_data()
{
    columns();
    row("all tie", QStringList{"a -", "b -", "c -"}, QStringList{"a", "b", "c"});
    row("all to subscribers tie", QStringList{"a 1", "b 2", "c 1"}, QStringList{"a", "b", "c"});
    row("centre first, each group in its order", QStringList{"a 1", "b -", "c 2", "d -"},
        QStringList{"b", "d", "a", "c"});
    row("good ones first", QStringList{"a! -", "b -", "c! -", "d -"}, QStringList{"b", "d", "a!", "c!"});
    row("bad ones alone tie", QStringList{"a! -", "b! -"}, QStringList{"a!", "b!"});
    row("bad to subscribers tie with good", QStringList{"a! 1", "b 2"}, QStringList{"a!", "b"});
    row("a good one to a subscriber passes a bad one to the centre", QStringList{"a! -", "b 1"},
        QStringList{"b", "a!"});
    row("a bad one to the centre passes one to a subscriber", QStringList{"a 1", "b! -"},
        QStringList{"b!", "a"});
    row("all kinds", QStringList{"a! -", "b 1", "c -"}, QStringList{"c", "b", "a!"});
    row("time has no say", QStringList{"a - 1 9", "b - 1 2"}, QStringList{"a", "b"});
}

void TestSendSort::centreStandsFirstInCKS()
{
    QFETCH(QStringList, rows);
    QFETCH(QStringList, expected);
    QCOMPARE(sorted(0, rows), expected);
}

void TestSendSort::subscribersStandFirstByTimeInSKK_data()
{
    columns();
    row("by time", QStringList{"a 1 1 30", "b 1 1 10", "c 2 1 20"}, QStringList{"b", "c", "a"});
    row("equal times keep their order", QStringList{"a 1 1 5", "b 2 1 5", "c 3 1 1", "d 4 1 5"},
        QStringList{"c", "a", "b", "d"});
    row("with a number before without", QStringList{"a - 1 1", "b 1 1 5", "c - 1 2", "d 2 1 3"},
        QStringList{"d", "b", "a", "c"});
    row("without numbers by time, too", QStringList{"a - 1 9", "b - 1 2"}, QStringList{"b", "a"});
    row("no tries left gives way to a later time", QStringList{"a 1 0 1", "b 1 1 9"}, QStringList{"b", "a"});
    row("the first with tries is moved at once, though an earlier one follows",
        QStringList{"a 1 0 1", "b 1 1 9", "c 1 1 2"}, QStringList{"b", "c", "a"});
    row("no tries left, but earlier", QStringList{"a 1 1 5", "b 1 0 1"}, QStringList{"b", "a"});
    row("none has tries left", QStringList{"a 1 0 5", "b 1 0 1"}, QStringList{"b", "a"});
    row("one without a number is passed over, whatever its tries", QStringList{"a 1 0 5", "b - 3 1"},
        QStringList{"a", "b"});
    row("bad has no say", QStringList{"a! 1 1 1", "b 1 1 2"}, QStringList{"a!", "b"});
    row("a time that is none stands first", QStringList{"a 1 1 1", "b 1 1"}, QStringList{"b", "a"});
}

void TestSendSort::subscribersStandFirstByTimeInSKK()
{
    QFETCH(QStringList, rows);
    QFETCH(QStringList, expected);
    QCOMPARE(sorted(1, rows), expected);
}

void TestSendSort::earliestTimeStandsFirstOnTheDirectLink_data()
{
    columns();
    row("by time", QStringList{"a - 0 30", "b - 0 10", "c - 0 20"}, QStringList{"b", "c", "a"});
    row("equal times keep their order", QStringList{"a - 0 5", "b - 0 5", "c - 0 1", "d - 0 5"},
        QStringList{"c", "a", "b", "d"});
    row("neither number nor tries nor bad have a say", QStringList{"a! - 0 2", "b 1 3 1", "c - 1 3"},
        QStringList{"b", "a!", "c"});
    row("a time that is none stands first", QStringList{"a - 0 1", "b - 0"}, QStringList{"b", "a"});
    row("reversed", QStringList{"d - 0 4", "c - 0 3", "b - 0 2", "a - 0 1"}, QStringList{"a", "b", "c", "d"});
}

void TestSendSort::earliestTimeStandsFirstOnTheDirectLink()
{
    QFETCH(QStringList, rows);
    QFETCH(QStringList, expected);
    QCOMPARE(sorted(2, rows), expected);
}

void TestSendSort::unknownProcedureSortsAsTheDirectLink()
{
    QCOMPARE(sorted(7, {"a - 0 2", "b 1 3 1"}), QStringList({"b", "a"}));
}

void TestSendSort::sortedRowsAreNotMoved()
{
    Desk desk;
    Options.processMode = 2;
    CTableViewModel_Send model;
    for (const char *description : {"a - 0 1", "b - 0 1", "c - 0 2"})
        model.append(queueRow(description));
    QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    model.sortValues();
    QCOMPARE(moved.count(), 0);
}

void TestSendSort::movedRowKeepsItsSelection()
{
    Desk desk;
    Options.processMode = 2;
    CTableViewModel_Send model;
    for (const char *description : {"a - 0 3", "b - 0 2", "c - 0 1"})
        model.append(queueRow(description));
    const QPersistentModelIndex b(model.index(1, 0));
    const QPersistentModelIndex c(model.index(2, 0));
    model.sortValues();
    QCOMPARE(names(model), QStringList({"c", "b", "a"}));
    QCOMPARE(b.data().toString(), QString("b"));
    QCOMPARE(c.row(), 0);
}

void TestSendSort::emptyListAndOneRowStay()
{
    for (const int mode : {0, 1, 2}) {
        QCOMPARE(sorted(mode, {}), QStringList());
        QCOMPARE(sorted(mode, {"a! 1 0 1"}), QStringList{"a!"});
    }
}

QTEST_GUILESS_MAIN(TestSendSort)
#include "test_send_sort.moc"
