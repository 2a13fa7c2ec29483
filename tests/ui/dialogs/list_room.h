#pragma once

#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/answers.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_lists_list_dialog.h"
#include "ui/dialogs/operator_list_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <memory>

/// One of the dialogs of lists, open and with the keyboard, over two records of each list.
class ListRoom
{
public:
    enum Kind { Operators, Subscribers, Lists };

    /// The rows of a test that holds for each kind.
    static void everyKind()
    {
        QTest::addColumn<int>("kind");
        row("operators", int(Operators));
        row("subscribers", int(Subscribers));
        row("lists", int(Lists));
    }

    explicit ListRoom(Kind kind, bool picker = false) : m_kind(kind)
    {
        Options.listOperators = QStringList{"Иванова", "Петрова"};
        Options.abonents = {{"Иванов", "П", "123456", "до 18"}, {"Петров", "С", "234567", ""}};
        Options.abonentLists = {{"Все", {"123456", "234567"}, "прим"}, {"Один", {"234567"}, ""}};
        open(picker);
    }

    /// Opens it, again if need be, over the lists that there are.
    void open(bool picker = false)
    {
        if (m_kind == Operators)
            dialog = std::make_unique<COperatorListDialog>();
        else if (m_kind == Subscribers)
            dialog = std::make_unique<CAbonentListDialog>();
        else
            dialog = std::make_unique<CAbonentListsListDialog>();
        if (m_kind != Operators)
            this->picker()->selectMode = picker;
        dialog->open();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    }

    [[nodiscard]] CPickListDialog *picker() const { return static_cast<CPickListDialog *>(dialog.get()); }
    [[nodiscard]] QTableWidget *table() const { return dialog->findChild<QTableWidget *>(); }
    [[nodiscard]] QPushButton *button(const char *name) const
    {
        return dialog->findChild<QPushButton *>(QString::fromLatin1(name));
    }
    [[nodiscard]] QCheckBox *editing() const { return dialog->findChild<QCheckBox *>("editing"); }
    [[nodiscard]] QString message() const { return dialog->findChild<QLabel *>("message")->text(); }
    /// The open cell; null if there is none.
    [[nodiscard]] QLineEdit *cell() const
    {
        for (QLineEdit *line : table()->viewport()->findChildren<QLineEdit *>())
            if (line->isVisible()) // a closed one goes later
                return line;
        return nullptr;
    }
    [[nodiscard]] int numberColumn() const { return m_kind == Lists ? 1 : 2; }

    void allow() const { editing()->setChecked(true); }
    /// Opens a cell by the keyboard.
    [[nodiscard]] QLineEdit *openCell(int row, int column) const
    {
        table()->setFocus();
        table()->setCurrentCell(row, column);
        QTest::keyClick(table(), Qt::Key_F2);
        return cell();
    }
    /// Types \a text into a cell over what stands there, up to Enter.
    void type(int row, int column, const QString &text) const
    {
        QLineEdit *line = openCell(row, column);
        QVERIFY(line != nullptr);
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        keys(line, text);
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_VERIFY(cell() == nullptr); // an edit ends by an event
    }
    /// Presses the keys of \a text, whatever letters they bear.
    static void keys(QWidget *widget, const QString &text)
    {
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, letter, Qt::NoModifier);
    }
    void press(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void doubleClick(int row, int column) const
    {
        const QPoint at = table()->visualItemRect(table()->item(row, column)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    [[nodiscard]] QString text(int row, int column) const { return table()->item(row, column)->text(); }

    /// The first fields of the list in Options, and all its numbers.
    [[nodiscard]] QString kept() const
    {
        QStringList all;
        if (m_kind == Operators)
            all = Options.listOperators;
        for (const CAbonent &one : m_kind == Subscribers ? Options.abonents : QList<CAbonent>())
            all << one.name + ':' + one.number;
        for (const CAbonentList &one : m_kind == Lists ? Options.abonentLists : QList<CAbonentList>())
            all << one.name + ':' + one.numbers.join('+');
        return all.join('/');
    }

    [[nodiscard]] QStringList journal() const { return m_desk.journal(); }

    Answers answers;
    std::unique_ptr<CListDialog> dialog;

private:
    const Desk m_desk;
    const Kind m_kind;
};
