// The menu's entries for subscribers, their lists and operators, and what the window shows afterwards.

#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

class TestListMenu : public QObject
{
    Q_OBJECT

private slots:
    void entryOpensItsList_data();
    void entryOpensItsList();
    void editorFollowsTheOperators();
    void editorHidesAnEmptyListOfOperators();
    void operatorWhoWasRemovedIsNoLongerChosen();
    void operatorsLeftAsTheyWereKeepTheChoice();
    void programEndsOverAnOpenList();
};

namespace
{
/// Triggers the entry with \a act inside the dialog that it opens.
void inList(const Station &station, const char *entry, const std::function<void(QDialog &)> &act)
{
    bool acted = false;
    QTimer::singleShot(0, station.form.get(), [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        act(*dialog);
        acted = true;
        dialog->close();
    });
    station.find<QAction>(entry)->trigger();
    QVERIFY(acted);
}

void setOperators(QDialog &dialog, const QStringList &names)
{
    auto *table = dialog.findChild<QTableWidget *>("operators");
    dialog.findChild<QCheckBox *>("editing")->setChecked(true);
    for (int row = 0; row < table->rowCount(); ++row)
        table->item(row, 0)->setText(names.value(row));
}

QStringList shownOperators(const Station &station)
{
    const auto *operators = station.find<QComboBox>("editorOperator");
    QStringList names;
    for (int i = 0; i < operators->count(); ++i)
        names << operators->itemText(i);
    return names;
}

void useOperators()
{
    Options.useOperators = true;
    Options.listOperators = QStringList{"ИВАНОВА", "ПЕТРОВА"};
    Options.lastOperator = "ПЕТРОВА";
}
} // namespace

void TestListMenu::entryOpensItsList_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("title");
    row("subscribers", "actionAbonents", "Абоненты");
    row("lists", "actionAbonentLists", "Списки Абонентов");
    row("operators", "actionOperators", "Операторы");
}

void TestListMenu::entryOpensItsList()
{
    QFETCH(QString, entry);
    const Station station(SKK, useOperators);
    QVERIFY(station.find<QAction>(qPrintable(entry))->isEnabled());
    inList(station, qPrintable(entry), [](QDialog &dialog) { QTEST(dialog.windowTitle(), "title"); });
}

void TestListMenu::editorFollowsTheOperators()
{
    const Station station(Direct, useOperators);
    const Answer yes(QMessageBox::Yes);
    inList(station, "actionOperators", [](QDialog &dialog) {
        setOperators(dialog, {"СИДОРОВА", "ПЕТРОВА"});
    });
    QCOMPARE(yes.asked, (QStringList{"Velda/Список операторов", "Сохранить изменения?"}));
    QCOMPARE(shownOperators(station), (QStringList{"-", "СИДОРОВА", "ПЕТРОВА"}));
    QCOMPARE(station.find<QComboBox>("editorOperator")->currentText(), QString("ПЕТРОВА"));
    QCOMPARE(Options.lastOperator, QString("ПЕТРОВА"));
}

void TestListMenu::editorHidesAnEmptyListOfOperators()
{
    const Station station(Direct, useOperators);
    const Answer yes(QMessageBox::Yes);
    QVERIFY(!station.find<QComboBox>("editorOperator")->isHidden());
    inList(station, "actionOperators", [](QDialog &dialog) { setOperators(dialog, {}); });
    QVERIFY(Options.listOperators.isEmpty());
    QVERIFY(station.find<QComboBox>("editorOperator")->isHidden());
    QVERIFY(station.find<QAction>("actionOperators")->isVisible()); // to enter some again
}

void TestListMenu::operatorWhoWasRemovedIsNoLongerChosen()
{
    Station station(Direct, useOperators);
    const Answer yes(QMessageBox::Yes);
    (void)station.news();
    inList(station, "actionOperators", [](QDialog &dialog) {
        setOperators(dialog, {"ИВАНОВА", "СИДОРОВА"});
    });
    QCOMPARE(Options.lastOperator, QString("-"));
    QCOMPARE(station.find<QComboBox>("editorOperator")->currentText(), QString("-"));
    station.tick(5);
    QVERIFY(station.news().join('/').contains("Оператор не указан "));
}

void TestListMenu::operatorsLeftAsTheyWereKeepTheChoice()
{
    Station station(Direct, useOperators);
    const Answer no(QMessageBox::No);
    (void)station.news();
    inList(station, "actionOperators", [](QDialog &dialog) { setOperators(dialog, {"А", "Б"}); });
    QCOMPARE(no.asked.size(), 2);
    QCOMPARE(shownOperators(station), (QStringList{"-", "ИВАНОВА", "ПЕТРОВА"}));
    QCOMPARE(Options.lastOperator, QString("ПЕТРОВА"));
    station.tick(5);
    QVERIFY(!station.news().join('/').contains("Оператор"));
}

void TestListMenu::programEndsOverAnOpenList()
{
    const Station station(Direct, useOperators);
    const Answer no(QMessageBox::No);
    inList(station, "actionOperators", [&](QDialog &dialog) {
        setOperators(dialog, {"СИДОРОВА", "ПЕТРОВА"});
        State.closeAllowed = true;
        station.form->close();
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(no.asked, QStringList());
    QCOMPARE(Options.listOperators, (QStringList{"СИДОРОВА", "ПЕТРОВА"}));
}

QTEST_MAIN(TestListMenu)
#include "test_list_menu.moc"
