// The lists of numbers as pickers: what is chosen, by which keys and clicks, and what becomes of changes.

#include "records/protocol.h"
#include "tests/ui/dialogs/list_room.h"

class TestListPicking : public QObject
{
    Q_OBJECT

private slots:
    void buttonWithoutACurrentRowLeavesTheDialogOpen_data() { addKinds(); }
    void buttonWithoutACurrentRowLeavesTheDialogOpen();
    void rowWithoutAnItemIsNotChosen_data() { addKinds(); }
    void rowWithoutAnItemIsNotChosen();
    void numbersOfTheCurrentRowAreChosen_data();
    void numbersOfTheCurrentRowAreChosen();
    void choosingWithAChangeAsksFirst_data();
    void choosingWithAChangeAsksFirst();
    void openCellIsTakenBeforeTheChoice();
    void choosingWorksOutsideAPickerToo();

    void doubleClickChooses_data() { addKinds(); }
    void doubleClickChooses();
    void doubleClickWithAChangeAsksNothing_data() { addKinds(); }
    void doubleClickWithAChangeAsksNothing();
    void doubleClickWhileEditingOutsideAPickerOpensTheCell_data() { addKinds(); }
    void doubleClickWhileEditingOutsideAPickerOpensTheCell();
    void doubleClickOutsideAPickerDoesNothing();

private:
    static void addKinds();
};

namespace
{
QString numbersOf(int kind, int row)
{
    if (kind == ListRoom::Lists)
        return row == 0 ? "123456,234567" : "234567";
    return row == 0 ? "123456" : "234567";
}
} // namespace

void TestListPicking::addKinds()
{
    QTest::addColumn<int>("kind");
    row("subscribers", int(ListRoom::Subscribers));
    row("lists", int(ListRoom::Lists));
}

void TestListPicking::buttonWithoutACurrentRowLeavesTheDialogOpen()
{
    QFETCH(int, kind);
    const ListRoom room(ListRoom::Kind(kind), true);
    room.table()->setCurrentCell(-1, -1);
    room.press("select");
    QCOMPARE(room.table()->currentRow(), -1); // the button took the keyboard, not the table
    QVERIFY(room.dialog->isVisible());
    QCOMPARE(room.picker()->selected, QString());
}

void TestListPicking::rowWithoutAnItemIsNotChosen()
{
    QFETCH(int, kind);
    const ListRoom room(ListRoom::Kind(kind), true);
    delete room.table()->takeItem(0, room.numberColumn());
    room.table()->setCurrentCell(0, 0);
    room.press("select");
    room.picker()->cellDoubleClicked(0, 0);
    QVERIFY(room.dialog->isVisible());
}

void TestListPicking::numbersOfTheCurrentRowAreChosen_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("byKey");
    row("subscriber by button", int(ListRoom::Subscribers), false);
    row("subscriber by Enter", int(ListRoom::Subscribers), true);
    row("list by button", int(ListRoom::Lists), false);
    row("list by Enter", int(ListRoom::Lists), true);
}

void TestListPicking::numbersOfTheCurrentRowAreChosen()
{
    QFETCH(int, kind);
    QFETCH(bool, byKey);
    for (int row : {0, 1}) {
        const ListRoom room(ListRoom::Kind(kind), true);
        room.table()->setCurrentCell(row, 0);
        if (byKey)
            QTest::keyClick(room.table(), Qt::Key_Return);
        else
            room.press("select");
        QVERIFY(!room.dialog->isVisible());
        QCOMPARE(room.dialog->result(), 1);
        QCOMPARE(room.picker()->selected, numbersOf(kind, row));
        QCOMPARE(room.answers.asked, QStringList());
    }
}

void TestListPicking::choosingWithAChangeAsksFirst_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("kept");
    const QString subscribers = "Velda/Список абонентов/Сохранить изменения?";
    const QString lists = "Velda/Списки абонентов/Сохранить изменения?";
    row("subscribers, yes", int(ListRoom::Subscribers), true, subscribers, "Сидоров:345678/Петров:234567");
    row("subscribers, no", int(ListRoom::Subscribers), false, subscribers, "Иванов:123456/Петров:234567");
    row("lists, yes", int(ListRoom::Lists), true, lists, "Сидоров:345678/Один:234567");
    row("lists, no", int(ListRoom::Lists), false, lists, "Все:123456+234567/Один:234567");
}

void TestListPicking::choosingWithAChangeAsksFirst()
{
    QFETCH(int, kind);
    QFETCH(bool, yes);
    ListRoom room(ListRoom::Kind(kind), true);
    room.answers.yes = {yes};
    room.allow();
    room.type(0, 0, "Сидоров");
    room.type(0, room.numberColumn(), "345678");
    room.press("select");
    QTEST(room.answers.asked.join('+'), "question");
    QCOMPARE(room.dialog->result(), 1);
    QCOMPARE(room.picker()->selected, QString("345678"));
    QTEST(room.kept(), "kept");
}

void TestListPicking::openCellIsTakenBeforeTheChoice()
{
    ListRoom room(ListRoom::Subscribers, true);
    room.answers.yes = {true};
    room.allow();
    QLineEdit *line = room.openCell(1, 2);
    line->selectAll();
    room.keys(line, "34-56-78");
    room.picker()->slotSelect();
    QCOMPARE(room.picker()->selected, QString("345678"));
    QCOMPARE(room.answers.asked.size(), 1);
    QCOMPARE(room.kept(), QString("Иванов:123456/Петров:345678"));
}

void TestListPicking::choosingWorksOutsideAPickerToo()
{
    const ListRoom room(ListRoom::Lists);
    room.table()->setCurrentCell(1, 0);
    room.press("select");
    QCOMPARE(room.dialog->result(), 1);
    QCOMPARE(room.picker()->selected, QString("234567"));
}

void TestListPicking::doubleClickChooses()
{
    QFETCH(int, kind);
    const ListRoom room(ListRoom::Kind(kind), true);
    room.doubleClick(1, 0);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.dialog->result(), 1);
    QCOMPARE(room.picker()->selected, numbersOf(kind, 1));
}

void TestListPicking::doubleClickWithAChangeAsksNothing()
{
    QFETCH(int, kind);
    const ListRoom room(ListRoom::Kind(kind), true);
    const QString before = room.kept();
    room.allow();
    room.type(0, 0, "Сидоров");
    room.doubleClick(1, 0);
    QCOMPARE(room.answers.asked, QStringList());
    QCOMPARE(room.dialog->result(), 1);
    QCOMPARE(room.picker()->selected, numbersOf(kind, 1));
    QCOMPARE(room.kept(), before);
    Log.addCacheServiceString("Далее", ProtocolInfo, false); // ends the line that the other may wait for
    QCOMPARE(room.journal().value(0), "312:00:00 " + room.dialog->windowTitle() + ": изменения не сохранены");
}

void TestListPicking::doubleClickWhileEditingOutsideAPickerOpensTheCell()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    room.doubleClick(1, 0);
    QVERIFY(room.dialog->isVisible());
    QVERIFY(room.cell() != nullptr);
    QCOMPARE(room.picker()->selected, QString());
}

void TestListPicking::doubleClickOutsideAPickerDoesNothing()
{
    const ListRoom room(ListRoom::Subscribers);
    room.doubleClick(1, 0);
    QVERIFY(room.dialog->isVisible());
    QVERIFY(room.cell() == nullptr);
}

QTEST_MAIN(TestListPicking)
#include "test_list_picking.moc"
