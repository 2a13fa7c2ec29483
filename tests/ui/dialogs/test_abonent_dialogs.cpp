// The dialog that asks for one number, and the list of subscribers behind its button.

#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_number_dialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <memory>

class TestAbonentDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_desk.reset(); }

    void numberDialogAsksForOneNumber();
    void numberIsSetAndStaysInTheDialog();
    void dialNeedsANumber();
    void numbersStandOnceAndSorted();
    void cancelKeepsTheFormerNumbers();
    void numberIsTakenFromTheList();
    void listLeftKeepsTheNumber_data();
    void listLeftKeepsTheNumber();
    void subscriberWithoutNumberKeepsTheNumber();
    void emptyListHasNothingToOpen();

    void listShowsTheSubscribers();
    void listCannotBeEdited();
    void withoutACurrentRowTheListStaysOpen();
    void rowIsChosenByTheKeyboard();
    void doubleClickChoosesInAPickerOnly_data();
    void doubleClickChoosesInAPickerOnly();
    void oddRecordsAreShownAsTheyAre();
    void numbersAreSeenInLargeLetters();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
/// Runs the number dialog on \a number with \a act inside it.
int askNumber(CAbonentNumberDialog &dialog, const QString &number, const std::function<void()> &act)
{
    bool acted = false;
    QTimer::singleShot(0, &dialog, [&] {
        act();
        acted = true;
        if (dialog.isVisible())
            dialog.reject();
    });
    const int result = dialog.exec(number, "Номер абонента");
    return acted ? result : -1;
}

QPushButton *button(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(name);
}

QLineEdit *numberOf(const QDialog &dialog)
{
    return dialog.findChild<QComboBox *>("number")->lineEdit();
}

QTableWidget *tableOf(const QDialog &dialog)
{
    return dialog.findChild<QTableWidget *>("abonents");
}

/// Presses "..." with \a act inside the list that it opens.
void inList(const CAbonentNumberDialog &dialog, const std::function<void(CAbonentListDialog &)> &act)
{
    bool acted = false;
    QTimer::singleShot(0, [&] {
        auto *list = qobject_cast<CAbonentListDialog *>(QApplication::activeModalWidget());
        QVERIFY(list != nullptr);
        act(*list);
        acted = true;
        if (list->isVisible())
            list->reject();
    });
    QTest::mouseClick(button(dialog, "abonents"), Qt::LeftButton);
    QVERIFY(acted);
}
} // namespace

void TestAbonentDialogs::init()
{
    m_desk = std::make_unique<Desk>();
    Options.abonents = {
        {"Иванов", "П", "123456", "до 18"}, {"Петров", "С", "234567", ""}, {"Без номера", "", "", ""}};
}

void TestAbonentDialogs::numberDialogAsksForOneNumber()
{
    Options.lastManualCallNumbers = QStringList{"111", "222"};
    CAbonentNumberDialog dialog;
    QCOMPARE(dialog.findChild<QLabel *>()->text(), QString("Номер"));
    QCOMPARE(numberOf(dialog)->placeholderText(), QString("0000"));
    QCOMPARE(button(dialog, "abonents")->text(), QString("..."));
    QCOMPARE(button(dialog, "dial")->text(), QString("Набрать"));
    QCOMPARE(button(dialog, "cancel")->text(), QString("Отменить"));
    const auto *numbers = dialog.findChild<QComboBox *>("number");
    QVERIFY(numbers->isEditable());
    QCOMPARE(numbers->count(), 2);
    QCOMPARE(numbers->itemText(0) + numbers->itemText(1), QString("111222"));
}

void TestAbonentDialogs::numberIsSetAndStaysInTheDialog()
{
    CAbonentNumberDialog dialog;
    QCOMPARE(askNumber(dialog, "345",
                       [&] {
                           QCOMPARE(dialog.windowTitle(), QString("Номер абонента"));
                           QCOMPARE(numberOf(dialog)->text(), QString("345"));
                           QCOMPARE(numberOf(dialog)->selectedText(), QString("345"));
                           QTest::keyClicks(numberOf(dialog), "67");
                           QTest::mouseClick(button(dialog, "dial"), Qt::LeftButton);
                       }),
             1);
    QCOMPARE(dialog.number, QString("67"));
}

void TestAbonentDialogs::dialNeedsANumber()
{
    CAbonentNumberDialog dialog;
    QCOMPARE(askNumber(dialog, "",
                       [&] {
                           QVERIFY(!button(dialog, "dial")->isEnabled());
                           QTest::keyClick(numberOf(dialog), Qt::Key_Return);
                           QVERIFY(dialog.isVisible());
                           QTest::keyClicks(numberOf(dialog), "1");
                           QVERIFY(button(dialog, "dial")->isEnabled());
                           QTest::keyClick(numberOf(dialog), Qt::Key_Backspace);
                           QVERIFY(!button(dialog, "dial")->isEnabled());
                       }),
             0);
}

void TestAbonentDialogs::numbersStandOnceAndSorted()
{
    Options.lastManualCallNumbers = QStringList{"300", "100", "300"};
    for (const char *typed : {"200", "100"}) {
        CAbonentNumberDialog dialog;
        askNumber(dialog, typed, [&] { QTest::mouseClick(button(dialog, "dial"), Qt::LeftButton); });
        QCOMPARE(Options.lastManualCallNumbers, (QStringList{"100", "200", "300"}));
    }
    const CAbonentNumberDialog next;
    QCOMPARE(next.findChild<QComboBox *>("number")->count(), 3);
}

void TestAbonentDialogs::cancelKeepsTheFormerNumbers()
{
    Options.lastManualCallNumbers = QStringList{"300", "100"};
    CAbonentNumberDialog dialog;
    QCOMPARE(askNumber(dialog, "200", [&] { QTest::mouseClick(button(dialog, "cancel"), Qt::LeftButton); }),
             0);
    QCOMPARE(dialog.number, QString());
    QCOMPARE(Options.lastManualCallNumbers, (QStringList{"300", "100"}));
}

void TestAbonentDialogs::numberIsTakenFromTheList()
{
    CAbonentNumberDialog dialog;
    QCOMPARE(askNumber(dialog, "",
                       [&] {
                           inList(dialog, [](CAbonentListDialog &list) {
                               QVERIFY(list.selectMode);
                               tableOf(list)->setCurrentCell(1, 0);
                               QTest::mouseClick(button(list, "select"), Qt::LeftButton);
                           });
                           QCOMPARE(numberOf(dialog)->text(), QString("234567"));
                           QVERIFY(dialog.focusWidget() == dialog.findChild<QComboBox *>("number"));
                           QTest::keyClick(numberOf(dialog), Qt::Key_Return);
                       }),
             1);
    QCOMPARE(dialog.number, QString("234567"));
    QCOMPARE(Options.lastManualCallNumbers, QStringList{"234567"});
}

void TestAbonentDialogs::listLeftKeepsTheNumber_data()
{
    QTest::addColumn<QString>("way");
    row("button", "button");
    row("Esc", "Esc");
    row("cross", "cross");
}

void TestAbonentDialogs::listLeftKeepsTheNumber()
{
    QFETCH(QString, way);
    CAbonentNumberDialog dialog;
    askNumber(dialog, "55", [&] {
        inList(dialog, [&](CAbonentListDialog &list) {
            tableOf(list)->setCurrentCell(0, 0);
            if (way == "button")
                QTest::mouseClick(button(list, "close"), Qt::LeftButton);
            else if (way == "Esc")
                QTest::keyClick(tableOf(list), Qt::Key_Escape);
            else
                list.close();
            QVERIFY(!list.isVisible());
        });
        QCOMPARE(numberOf(dialog)->text(), QString("55"));
    });
}

void TestAbonentDialogs::subscriberWithoutNumberKeepsTheNumber()
{
    CAbonentNumberDialog dialog;
    askNumber(dialog, "55", [&] {
        inList(dialog, [](CAbonentListDialog &list) {
            tableOf(list)->setCurrentCell(2, 0);
            QTest::mouseClick(button(list, "select"), Qt::LeftButton);
        });
        QCOMPARE(numberOf(dialog)->text(), QString("55"));
    });
}

void TestAbonentDialogs::emptyListHasNothingToOpen()
{
    Options.abonents.clear();
    const CAbonentNumberDialog dialog;
    QVERIFY(!button(dialog, "abonents")->isEnabled());
    QCOMPARE(button(dialog, "abonents")->toolTip(), QString("Список абонентов пуст"));
}

// The list

void TestAbonentDialogs::listShowsTheSubscribers()
{
    const CAbonentListDialog list;
    const QTableWidget *table = tableOf(list);
    QCOMPARE(list.windowTitle(), QString("Абоненты"));
    QStringList titles, first;
    for (int column = 0; column < table->columnCount(); ++column) {
        titles << table->horizontalHeaderItem(column)->text();
        first << table->item(0, column)->text();
    }
    QCOMPARE(titles, (QStringList{"Наименование", "Категория", "Номер", "Примечание"}));
    QCOMPARE(first, (QStringList{"Иванов", "П", "123456", "до 18"}));
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(button(list, "select")->text(), QString("Выбрать абонента"));
    QCOMPARE(button(list, "close")->text(), QString("Закрыть"));
}

void TestAbonentDialogs::listCannotBeEdited()
{
    CAbonentListDialog list;
    list.open();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    tableOf(list)->setCurrentCell(0, 0);
    QTest::keyClick(tableOf(list), Qt::Key_F2);
    QTest::keyClicks(tableOf(list), "x");
    QTest::keyClick(tableOf(list), Qt::Key_Delete);
    QVERIFY(tableOf(list)->findChildren<QLineEdit *>().isEmpty());
    QCOMPARE(tableOf(list)->item(0, 0)->text(), QString("Иванов"));
    QCOMPARE(Options.abonents.size(), 3);
}

void TestAbonentDialogs::withoutACurrentRowTheListStaysOpen()
{
    CAbonentListDialog list;
    list.open();
    QCOMPARE(tableOf(list)->currentRow(), -1);
    list.slotSelect();
    QVERIFY(list.isVisible());
    QCOMPARE(list.selected, QString());
}

void TestAbonentDialogs::rowIsChosenByTheKeyboard()
{
    CAbonentListDialog list;
    list.open();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    for (const QChar letter : QString("Петр")) // the name's beginning
        QTest::sendKeyEvent(QTest::Click, tableOf(list), Qt::Key_unknown, letter, Qt::NoModifier);
    QCOMPARE(tableOf(list)->currentRow(), 1);
    QTest::keyClick(tableOf(list), Qt::Key_Up);
    QTest::keyClick(tableOf(list), Qt::Key_Return);
    QCOMPARE(list.result(), 1);
    QCOMPARE(list.selected, QString("123456"));
}

void TestAbonentDialogs::doubleClickChoosesInAPickerOnly_data()
{
    QTest::addColumn<bool>("selectMode");
    row("to choose", true);
    row("to look", false);
}

void TestAbonentDialogs::doubleClickChoosesInAPickerOnly()
{
    QFETCH(bool, selectMode);
    CAbonentListDialog list;
    list.selectMode = selectMode;
    list.open();
    QTableWidget *table = tableOf(list);
    const QPoint at = table->visualItemRect(table->item(1, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(list.isVisible(), !selectMode);
    QCOMPARE(list.selected, selectMode ? QString("234567") : QString());
}

void TestAbonentDialogs::oddRecordsAreShownAsTheyAre()
{
    Options.abonents = {{QString(10000, 'A'), "<b>П</b>", "12\n34", QString(QChar(0)) + "\t"}};
    for (int i = 0; i < 5000; ++i)
        Options.abonents << CAbonent{QString::number(i), "", QString::number(i), ""};
    CAbonentListDialog list;
    list.open();
    tableOf(list)->setCurrentCell(0, 0);
    list.slotSelect();
    QCOMPARE(list.selected, QString("12\n34"));
    QCOMPARE(tableOf(list)->rowCount(), 5001);
}

void TestAbonentDialogs::numbersAreSeenInLargeLetters()
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(2 * usual.pointSizeF());
    QApplication::setFont(large);
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    CAbonentNumberDialog dialog;
    dialog.show();
    dialog.resize(1, 1);
    const QLineEdit *field = numberOf(dialog);
    QVERIFY(field->width() >= field->fontMetrics().horizontalAdvance("000000000"));
    CAbonentListDialog list;
    list.show();
    const QTableWidget *table = tableOf(list);
    QVERIFY(table->viewport()->rect().contains(table->visualItemRect(table->item(0, 2))));
}

QTEST_MAIN(TestAbonentDialogs)
#include "test_abonent_dialogs.moc"
