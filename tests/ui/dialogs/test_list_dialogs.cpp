// The dialogs of operators, subscribers and their lists: what they are made of, when they can be edited, and
// what becomes of the changes.

#include "app/state.h"
#include "tests/ui/dialogs/list_room.h"

class TestListDialogs : public QObject
{
    Q_OBJECT

private slots:
    void dialogIsMadeOfItsColumns_data();
    void dialogIsMadeOfItsColumns();
    void recordsStandInTheirRows();
    void nothingIsEditedUntilThatIsAllowed_data() { ListRoom::everyKind(); }
    void nothingIsEditedUntilThatIsAllowed();
    void rowButtonsNeedEditingAndACurrentRow_data() { ListRoom::everyKind(); }
    void rowButtonsNeedEditingAndACurrentRow();
    void currentRowAlwaysStandsOut();

    void closingWithoutAnEditAsksNothing_data();
    void closingWithoutAnEditAsksNothing();
    void yesReplacesTheList_data() { addWays(); }
    void yesReplacesTheList();
    void noLeavesTheList_data() { addWays(); }
    void noLeavesTheList();
    void openCellIsTakenWhereverTheDialogIsLeft_data();
    void openCellIsTakenWhereverTheDialogIsLeft();
    void openCellIsTakenWhenEditingIsForbiddenAgain();

    void addedRowIsTypedIntoAtOnce_data();
    void addedRowIsTypedIntoAtOnce();
    void rowWithNothingInItIsNoRecord_data() { ListRoom::everyKind(); }
    void rowWithNothingInItIsNoRecord();
    void removedRowIsGoneAfterYes_data();
    void removedRowIsGoneAfterYes();
    void allRowsCanBeRemoved();
    void everyFieldIsKept();
    void numbersOfAListAreKeptOneByOne();
    void changeReachesTheFileAtTheNextSave();

    void programsEndKeepsTheChangesUnasked();
    void programsEndOverTheQuestionKeepsTheChanges();

private:
    static void addWays();
};

namespace
{
void leave(const ListRoom &room, const QString &way)
{
    if (way == "button")
        room.press("close");
    else if (way == "Esc")
        QTest::keyClick(room.table(), Qt::Key_Escape);
    else
        room.dialog->close();
}

const char *const questions[] = {"Velda/Список операторов/Сохранить изменения?",
                                 "Velda/Список абонентов/Сохранить изменения?",
                                 "Velda/Списки абонентов/Сохранить изменения?"};
} // namespace

void TestListDialogs::addWays()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("way");
    const char *const kinds[] = {"operators", "subscribers", "lists"};
    for (int kind = 0; kind < 3; ++kind)
        for (const char *way : {"button", "Esc", "cross"})
            QTest::addRow("%s by %s", kinds[kind], way) << kind << QString::fromLatin1(way);
}

void TestListDialogs::dialogIsMadeOfItsColumns_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("titles");
    QTest::addColumn<QString>("buttons");
    row("operators", int(ListRoom::Operators), "Операторы", "Оператор",
        "Добавить строку|Удалить строку|Закрыть");
    row("subscribers", int(ListRoom::Subscribers), "Абоненты", "Наименование|Категория|Номер|Примечание",
        "Добавить строку|Удалить строку|Выбрать абонента|Закрыть");
    row("lists", int(ListRoom::Lists), "Списки Абонентов",
        "Наименование|Номера абонентов, через запятую|Примечание",
        "Добавить строку|Удалить строку|Выбрать список|Закрыть");
}

void TestListDialogs::dialogIsMadeOfItsColumns()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    QStringList titles, buttons;
    for (int column = 0; column < room.table()->columnCount(); ++column)
        titles << room.table()->horizontalHeaderItem(column)->text();
    for (const char *name : {"addRow", "removeRow", "select", "close"})
        if (room.button(name) != nullptr)
            buttons << room.button(name)->text();
    QTEST(room.dialog->windowTitle(), "heading");
    QTEST(titles.join('|'), "titles");
    QTEST(buttons.join('|'), "buttons");
    QCOMPARE(room.editing()->text(), QString("Разрешить редактирование"));
    QVERIFY(!room.editing()->isChecked());
}

void TestListDialogs::recordsStandInTheirRows()
{
    const ListRoom operators(ListRoom::Operators);
    QCOMPARE(operators.text(0, 0) + operators.text(1, 0), QString("ИвановаПетрова"));
    const ListRoom lists(ListRoom::Lists);
    QCOMPARE(lists.text(0, 0), QString("Все"));
    QCOMPARE(lists.text(0, 1), QString("123456,234567"));
    QCOMPARE(lists.text(0, 2), QString("прим"));
    QCOMPARE(lists.table()->rowCount(), 2);
}

void TestListDialogs::nothingIsEditedUntilThatIsAllowed()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    QVERIFY(room.openCell(0, 0) == nullptr);
    room.keys(room.table(), "x");
    QTest::keyClick(room.table(), Qt::Key_Insert);
    QTest::keyClick(room.table(), Qt::Key_Delete, Qt::ControlModifier);
    QVERIFY(room.cell() == nullptr);
    QCOMPARE(room.table()->rowCount(), 2);

    QTest::keyClick(room.editing(), Qt::Key_Space);
    QVERIFY(room.openCell(0, 0) != nullptr);
    QTest::keyClick(room.cell(), Qt::Key_Escape);
    QTest::keyClick(room.editing(), Qt::Key_Space);
    QVERIFY(room.openCell(0, 0) == nullptr);
    QVERIFY(!room.dialog->changed);
}

void TestListDialogs::rowButtonsNeedEditingAndACurrentRow()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    room.table()->setCurrentCell(-1, -1);
    QVERIFY(!room.button("addRow")->isEnabled() && !room.button("removeRow")->isEnabled());
    room.editing()->click();
    QVERIFY(room.button("addRow")->isEnabled() && !room.button("removeRow")->isEnabled());
    room.table()->setCurrentCell(1, 0);
    QVERIFY(room.button("removeRow")->isEnabled());
    room.editing()->click();
    QVERIFY(!room.button("addRow")->isEnabled() && !room.button("removeRow")->isEnabled());
}

void TestListDialogs::currentRowAlwaysStandsOut()
{
    const ListRoom room(ListRoom::Subscribers);
    const auto isSelected = [&](int row) {
        return room.table()->selectionModel()->isRowSelected(row, QModelIndex());
    };
    QCOMPARE(room.table()->currentRow(), 0); // the keyboard is there
    QVERIFY(isSelected(0));
    const QPoint first = room.table()->visualItemRect(room.table()->item(0, 0)).center();
    QTest::mouseClick(room.table()->viewport(), Qt::LeftButton, Qt::ControlModifier, first);
    QVERIFY(isSelected(0));
    QTest::keyClick(room.table(), Qt::Key_Down);
    QVERIFY(isSelected(1) && !isSelected(0));
}

void TestListDialogs::closingWithoutAnEditAsksNothing_data()
{
    addWays();
}

void TestListDialogs::closingWithoutAnEditAsksNothing()
{
    QFETCH(int, kind);
    QFETCH(QString, way);
    const ListRoom room{ListRoom::Kind(kind)};
    const QString before = room.kept();
    room.allow();
    QVERIFY(room.openCell(0, 0) != nullptr);
    QTest::keyClick(room.cell(), Qt::Key_Escape); // looked, but did not change
    leave(room, way);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.dialog->result(), 0);
    QCOMPARE(room.answers.asked, QStringList());
    QCOMPARE(room.kept(), before);
}

void TestListDialogs::yesReplacesTheList()
{
    QFETCH(int, kind);
    QFETCH(QString, way);
    ListRoom room{ListRoom::Kind(kind)};
    const QString second = room.kept().section('/', 1);
    room.answers.yes = {true};
    room.allow();
    room.type(0, 0, "Сидоров");
    QVERIFY(room.dialog->changed);
    leave(room, way);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.answers.asked, QStringList{questions[kind]});
    QCOMPARE(room.kept().section(':', 0, 0).section('/', 0, 0), QString("Сидоров"));
    QCOMPARE(room.kept().section('/', 1), second);
}

void TestListDialogs::noLeavesTheList()
{
    QFETCH(int, kind);
    QFETCH(QString, way);
    ListRoom room{ListRoom::Kind(kind)};
    const QString before = room.kept();
    room.answers.yes = {false};
    room.allow();
    room.type(0, 0, "Сидоров");
    leave(room, way);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.answers.asked, QStringList{questions[kind]});
    QCOMPARE(room.kept(), before);
}

void TestListDialogs::openCellIsTakenWhereverTheDialogIsLeft_data()
{
    QTest::addColumn<QString>("way");
    row("button", "button");
    row("cross", "cross");
}

void TestListDialogs::openCellIsTakenWhereverTheDialogIsLeft()
{
    QFETCH(QString, way);
    ListRoom room(ListRoom::Operators);
    room.answers.yes = {true};
    room.allow();
    room.keys(room.openCell(1, 0), "Сидорова");
    leave(room, way);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.answers.asked.size(), 1);
    QCOMPARE(room.kept(), QString("Иванова/Сидорова"));
}

void TestListDialogs::openCellIsTakenWhenEditingIsForbiddenAgain()
{
    const ListRoom room(ListRoom::Operators);
    room.allow();
    room.keys(room.openCell(1, 0), "Сидорова");
    room.editing()->setChecked(false);
    QVERIFY(room.cell() == nullptr);
    QCOMPARE(room.text(1, 0), QString("Сидорова"));
    QVERIFY(room.dialog->changed);
}

void TestListDialogs::addedRowIsTypedIntoAtOnce_data()
{
    QTest::addColumn<bool>("byKey");
    row("button", false);
    row("key", true);
}

void TestListDialogs::addedRowIsTypedIntoAtOnce()
{
    QFETCH(bool, byKey);
    ListRoom room(ListRoom::Subscribers);
    room.answers.yes = {true};
    room.allow();
    if (byKey)
        QTest::keyClick(room.table(), Qt::Key_Insert);
    else
        room.press("addRow");
    for (const char *field : {"Сидоров", "П", "345678", "ночью"}) {
        QVERIFY(room.cell() != nullptr);
        room.keys(room.cell(), QString::fromUtf8(field));
        QTest::keyClick(room.cell(), Qt::Key_Tab); // to the next cell
    }
    room.dialog->close();
    QCOMPARE(room.kept(), QString("Иванов:123456/Петров:234567/Сидоров:345678"));
    QCOMPARE(Options.abonents.last().category + Options.abonents.last().note, QString("Пночью"));
}

void TestListDialogs::rowWithNothingInItIsNoRecord()
{
    QFETCH(int, kind);
    ListRoom room{ListRoom::Kind(kind)};
    const QString before = room.kept();
    room.answers.yes = {true};
    room.allow();
    room.press("addRow");
    room.press("addRow");
    QCOMPARE(room.table()->rowCount(), 4);
    room.dialog->close();
    QCOMPARE(room.answers.asked, QStringList{questions[kind]});
    QCOMPARE(room.kept(), before);
}

void TestListDialogs::removedRowIsGoneAfterYes_data()
{
    QTest::addColumn<bool>("byKey");
    row("button", false);
    row("key", true);
}

void TestListDialogs::removedRowIsGoneAfterYes()
{
    QFETCH(bool, byKey);
    ListRoom room(ListRoom::Lists);
    room.answers.yes = {true};
    room.allow();
    room.table()->setCurrentCell(0, 1);
    if (byKey)
        QTest::keyClick(room.table(), Qt::Key_Delete, Qt::ControlModifier);
    else
        room.press("removeRow");
    QCOMPARE(room.table()->rowCount(), 1);
    QCOMPARE(room.text(0, 0), QString("Один"));
    room.dialog->close();
    QCOMPARE(room.answers.asked.size(), 1);
    QCOMPARE(room.kept(), QString("Один:234567"));
}

void TestListDialogs::allRowsCanBeRemoved()
{
    ListRoom room(ListRoom::Operators);
    room.answers.yes = {true};
    room.allow();
    room.table()->setCurrentCell(1, 0);
    room.press("removeRow");
    room.press("removeRow");
    QVERIFY(!room.button("removeRow")->isEnabled());
    room.dialog->removeRow(); // there is none
    room.dialog->close();
    QVERIFY(Options.listOperators.isEmpty());
}

void TestListDialogs::everyFieldIsKept()
{
    ListRoom room(ListRoom::Subscribers);
    room.answers.yes = {true};
    room.allow();
    const char *const fields[] = {"Сидоров", "С", "+7345678", "ночью"};
    for (int column = 0; column < 4; ++column)
        room.type(1, column, QString::fromUtf8(fields[column]));
    room.dialog->close();
    const CAbonent &second = Options.abonents.at(1);
    QCOMPARE(QStringList({second.name, second.category, second.number, second.note}).join('/'),
             QString("Сидоров/С/+7345678/ночью"));
    QCOMPARE(Options.abonents.first().note, QString("до 18"));
}

void TestListDialogs::numbersOfAListAreKeptOneByOne()
{
    ListRoom room(ListRoom::Lists);
    room.answers.yes = {true};
    room.allow();
    room.type(0, 1, "111111,222222,333333");
    room.type(1, 1, "");
    room.dialog->close();
    QCOMPARE(Options.abonentLists.at(0).numbers, (QStringList{"111111", "222222", "333333"}));
    QCOMPARE(Options.abonentLists.at(1).numbers, QStringList());
    QCOMPARE(Options.abonentLists.at(0).note, QString("прим"));
}

void TestListDialogs::changeReachesTheFileAtTheNextSave()
{
    ListRoom room(ListRoom::Lists);
    Options.Save();
    room.answers.yes = {true};
    room.allow();
    room.type(1, 1, "345678,456789");
    room.dialog->close();
    Options.Load(); // as it would be after a kill
    QCOMPARE(room.kept(), QString("Все:123456+234567/Один:234567"));

    room.open();
    room.answers.yes = {true};
    room.allow();
    room.type(1, 1, "345678,456789");
    room.dialog->close();
    Options.Save();
    Options.abonentLists.clear();
    Options.Load();
    QCOMPARE(room.kept(), QString("Все:123456+234567/Один:345678+456789"));
}

void TestListDialogs::programsEndKeepsTheChangesUnasked()
{
    const ListRoom room(ListRoom::Operators);
    room.allow();
    room.keys(room.openCell(1, 0), "Сидорова");
    State.closeAllowed = true;
    room.dialog->close();
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.answers.asked, QStringList());
    QCOMPARE(room.kept(), QString("Иванова/Сидорова"));
}

void TestListDialogs::programsEndOverTheQuestionKeepsTheChanges()
{
    const ListRoom room(ListRoom::Operators);
    room.allow();
    room.type(1, 0, "Сидорова");
    askHandler = [&](QWidget *, const QString &, const QString &) { // the answers' end puts the former back
        State.closeAllowed = true;
        room.dialog->close();
        return int(QMessageBox::No);
    };
    room.dialog->close();
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.kept(), QString("Иванова/Сидорова"));
}

QTEST_MAIN(TestListDialogs)
#include "test_list_dialogs.moc"
