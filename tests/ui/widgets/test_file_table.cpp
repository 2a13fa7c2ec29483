#include "ui/widgets/file_table.h"

#include "tests/support/row.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStringListModel>
#include <QToolTip>
#include <QVBoxLayout>
#include <QtTest>

/// A window with a table of four files between two other fields.
struct Room {
    Room()
    {
        auto *rows = new QVBoxLayout(&window);
        rows->addWidget(before);
        rows->addWidget(table);
        rows->addWidget(after);
        files.setStringList({"a", "b", "c", "d"});
        table->setModel(&files);
        window.show();
        window.activateWindow();
        table->setFocus();
    }

    QStringListModel files;
    QWidget window;
    QLineEdit *before = new QLineEdit;
    CFileTable *table = new CFileTable;
    QLineEdit *after = new QLineEdit;
};

class TestFileTable : public QObject
{
    Q_OBJECT

private slots:
    void keysSelectRows_data();
    void keysSelectRows();
    void keysOfAnEmptyListDoNothing();
    void enterOpensTheRow();
    void tabLeavesTheList();
    void removedRowLeavesNothingSelected_data();
    void removedRowLeavesNothingSelected();
    void selectionFollowsItsRow();
    void cutCellShowsItsWholeText();
};

void TestFileTable::keysSelectRows_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    row("down", 1, int(Qt::Key_Down), 2);
    row("up", 2, int(Qt::Key_Up), 1);
    row("Home", 2, int(Qt::Key_Home), 0);
    row("End", 1, int(Qt::Key_End), 3);
    row("down at the last", 3, int(Qt::Key_Down), 3);
    row("up at the first", 0, int(Qt::Key_Up), 0);
}

void TestFileTable::keysSelectRows()
{
    QFETCH(int, from);
    QFETCH(int, key);
    Room room;
    room.table->selectRow(from);
    QTest::keyClick(room.table, Qt::Key(key));
    QTEST(room.table->selectedRow(), "to");
}

void TestFileTable::keysOfAnEmptyListDoNothing()
{
    Room room;
    room.files.setStringList({});
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_Return})
        QTest::keyClick(room.table, key);
    QCOMPARE(room.table->selectedRow(), -1);
}

void TestFileTable::enterOpensTheRow()
{
    Room room;
    const QSignalSpy opened(room.table, &CFileTable::activated);
    room.table->selectRow(1);
    QTest::keyClick(room.table, Qt::Key_Return);
    QCOMPARE(opened.count(), 1);
    QCOMPARE(room.files.stringList().at(1), QStringLiteral("b"));
}

void TestFileTable::tabLeavesTheList()
{
    Room room;
    QVERIFY(QTest::qWaitForWindowActive(&room.window));
    QTest::keyClick(room.table, Qt::Key_Tab);
    QVERIFY(room.after->hasFocus());
    QTest::keyClick(room.after, Qt::Key_Backtab);
    QVERIFY(room.table->hasFocus());
}

void TestFileTable::removedRowLeavesNothingSelected_data()
{
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("next"); // what the key selects then
    row("the first, then down", 0, int(Qt::Key_Down), "b");
    row("the first, then up", 0, int(Qt::Key_Up), "b");
    row("one in the middle, then down", 1, int(Qt::Key_Down), "c");
    row("one in the middle, then a page down", 1, int(Qt::Key_PageDown), "c");
    row("one in the middle, then Home", 1, int(Qt::Key_Home), "a");
    row("the first, then Home", 0, int(Qt::Key_Home), "b");
    row("the last, then down", 3, int(Qt::Key_Down), "c");
    row("the last, then End", 3, int(Qt::Key_End), "c");
}

void TestFileTable::removedRowLeavesNothingSelected()
{
    QFETCH(int, selected);
    QFETCH(int, key);
    Room room;
    room.table->selectRow(selected);
    const QSignalSpy changed(room.table->selectionModel(), &QItemSelectionModel::selectionChanged);
    room.files.removeRow(selected);
    QCOMPARE(room.table->selectedRow(), -1);
    QCOMPARE(changed.count(), 1);
    QTest::keyClick(room.table, Qt::Key(key));
    QTEST(room.files.stringList().value(room.table->selectedRow()), "next");
}

void TestFileTable::selectionFollowsItsRow()
{
    Room room;
    room.table->selectRow(1);
    const QSignalSpy changed(room.table->selectionModel(), &QItemSelectionModel::selectionChanged);
    room.files.insertRow(0);
    QCOMPARE(room.table->selectedRow(), 2);
    room.files.removeRow(0);
    room.files.removeRow(3);
    QCOMPARE(room.table->selectedRow(), 1);
    QCOMPARE(changed.count(), 0);
}

void TestFileTable::cutCellShowsItsWholeText()
{
    const auto pointAt = [](const Room &room, int row) {
        const QPoint place = room.table->visualRect(room.files.index(row)).center();
        QHelpEvent event(QEvent::ToolTip, place, room.table->viewport()->mapToGlobal(place));
        QApplication::sendEvent(room.table->viewport(), &event);
    };
    Room room;
    room.files.setStringList({"20260731u009.b012 <b>", "a"});
    room.table->setColumnWidth(0, 60);
    pointAt(room, 0);
    QTRY_VERIFY(QToolTip::text().contains("20260731u009.b012 &lt;b&gt;"));
    pointAt(room, 1);
    QTRY_COMPARE(QToolTip::text(), QString());
}

QTEST_MAIN(TestFileTable)
#include "test_file_table.moc"
