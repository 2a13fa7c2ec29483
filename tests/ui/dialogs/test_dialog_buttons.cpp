// The row of buttons of every dialog: what it holds, what Enter and Esc mean, and where the keyboard begins.

#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/ui/dialogs/all_dialogs.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace AllDialogs;

namespace
{
struct Buttons {
    const char *row;
    const char *names;     ///< from left to right
    const char *byDefault; ///< of Enter; empty: none
    const char *leave;
    const char *first; ///< has the keyboard at the start
};

const Buttons all[] = {
    {"about", "close", "close", "close", "close"},
    {"category", "close", "close", "close", "close"},
    {"Р", "confirm cancel", "confirm", "cancel", "number"},
    {"firmware", "apply lock cancel", "", "cancel", "device"},
    {"Ethernet adapter", "read write cancel", "", "cancel", "sys_mode"},
    {"line test", "start close", "start", "close", "start"},
    {"subscriber's number", "dial cancel abonents", "dial", "cancel", "number"},
    {"subscribers", "select addRow removeRow close", "select", "close", "abonents"},
    {"lists of subscribers", "select addRow removeRow close", "select", "close", "abonentLists"},
    {"operators", "addRow removeRow close", "close", "close", "operators"},
    {"number", "apply cancel", "apply", "cancel", "number"},
    {"received", "apply cancel", "apply", "cancel", "counter"},
    {"sent", "apply cancel", "apply", "cancel", "counter"},
    {"access code", "apply cancel", "apply", "cancel", "code"},
    {"options", "apply cancel", "apply", "cancel", "qt_tabwidget_tabbar"},
    {"string", "send cancel", "send", "cancel", "line"},
    {"text", "send cancel", "send", "cancel", "text"},
    {"print", "print close", "print", "close", "text"},
    {"forwarding", "forward cancel", "forward", "cancel", "number"},
    {"sending", "send cancel", "send", "cancel", "number"},
    {"search", "cancel", "", "cancel", "cancel"},
    {"tape in", "start stop clear apply close", "start", "close", "text"},
    {"tape out", "start stop skip skip10 close", "start", "close", "text"},
};

void addAll()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(all)); ++i)
        ::row(all[i].row, i);
}

/// The buttons of the row that are on view, from left to right.
QString buttonsOf(const QDialog &dialog)
{
    QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    std::sort(buttons.begin(), buttons.end(), [&dialog](QPushButton *one, QPushButton *other) {
        return one->mapTo(&dialog, QPoint()).x() < other->mapTo(&dialog, QPoint()).x();
    });
    QStringList names;
    for (const QPushButton *button : buttons)
        if (button->isVisibleTo(&dialog))
            names << button->objectName();
    return names.join(QLatin1Char(' '));
}

QString defaultOf(const QDialog &dialog)
{
    for (const QPushButton *button : dialog.findChildren<QPushButton *>())
        if (button->isDefault())
            return button->objectName();
    return QString();
}

QString focusOf(const QDialog &dialog)
{
    return dialog.focusWidget() == nullptr ? QString() : dialog.focusWidget()->objectName();
}
} // namespace

class TestDialogButtons : public QObject
{
    Q_OBJECT

private slots:
    void everyDialogStandsInTheTable()
    {
        QCOMPARE(std::size(all), std::size(rows));
        for (int i = 0; i < int(std::size(all)); ++i)
            QCOMPARE(all[i].row, rows[i].name);
    }

    void buttonsStandInTheirOrder_data() { addAll(); }
    void buttonsStandInTheirOrder()
    {
        QFETCH(int, index);
        const Desk desk;
        inside(rows[index], [index](CDialog &dialog) { QCOMPARE(buttonsOf(dialog), all[index].names); });
    }

    void enterMeansTheDefaultButton_data() { addAll(); }
    void enterMeansTheDefaultButton()
    {
        QFETCH(int, index);
        const Desk desk;
        inside(rows[index], [index](CDialog &dialog) {
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            QCOMPARE(defaultOf(dialog), all[index].byDefault);
        });
    }

    void keyboardBeginsAtTheField_data() { addAll(); }
    void keyboardBeginsAtTheField()
    {
        QFETCH(int, index);
        const Desk desk;
        inside(rows[index], [index](CDialog &dialog) {
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            QCOMPARE(focusOf(dialog), all[index].first);
        });
    }

    void leavingIsARefusal_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("way");
        for (int i = 0; i < int(std::size(all)); ++i)
            for (const char *way : {"button", "Esc", "cross"})
                QTest::addRow("%s by %s", all[i].row, way) << i << QString::fromLatin1(way);
    }
    void leavingIsARefusal()
    {
        QFETCH(int, index);
        QFETCH(QString, way);
        const Desk desk;
        inside(rows[index], [&](CDialog &dialog) {
            if (way == "button")
                QTest::mouseClick(dialog.findChild<QPushButton *>(all[index].leave), Qt::LeftButton);
            else if (way == "Esc")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.close();
            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.result(), int(QDialog::Rejected));
        });
        QCOMPARE(desk.sent(), QString());
    }

    void secondRunBeginsAtTheFieldAgain_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(std::size(all)); ++i)
            for (const char *name : {"subscriber's number", "number", "received", "string", "text"})
                if (qstrcmp(all[i].row, name) == 0)
                    ::row(name, i);
    }
    void secondRunBeginsAtTheFieldAgain()
    {
        QFETCH(int, index);
        const Desk desk;
        const std::unique_ptr<CDialog> dialog(rows[index].make());
        QStringList begun;
        for (int run = 0; run < 2; ++run) {
            QTimer::singleShot(0, dialog.get(), [&] {
                QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
                begun << focusOf(*dialog);
                auto *leave = dialog->findChild<QPushButton *>(all[index].leave);
                leave->setFocus();
                leave->click();
            });
            rows[index].run(*dialog);
        }
        QCOMPARE(begun, (QStringList{all[index].first, all[index].first}));
    }
};

QTEST_MAIN(TestDialogButtons)
#include "test_dialog_buttons.moc"
