// The dialog by which the operator dials: its list of former numbers, and a call that comes meanwhile.

#include "procedures/process_skk.h"
#include "tests/support/row.h"
#include "tests/ui/roll/seat.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

namespace
{
/// The open number dialog, with the keyboard as the system delivers it: an open list gets the keys first.
class Number
{
public:
    explicit Number(QDialog *dialog) : m_dialog(dialog), m_box(dialog->findChild<QComboBox *>("number")) {}

    void type(const QString &digits) const
    {
        for (const QChar digit : digits)
            QTest::keyClick(m_dialog->windowHandle(), digit.toLatin1());
    }
    void key(Qt::Key key) const { QTest::keyClick(m_dialog->windowHandle(), key); }
    [[nodiscard]] QString text() const { return m_box->currentText(); }
    [[nodiscard]] QPushButton *dial() const { return m_dialog->findChild<QPushButton *>("dial"); }
    [[nodiscard]] bool isOpen() const { return m_dialog->isVisible(); }
    /// The numbers in the list that is open; none if it is not.
    [[nodiscard]] QStringList list() const
    {
        const QAbstractItemView *view = m_box->completer()->popup();
        QStringList numbers;
        for (int row = 0; view->isVisible() && row < view->model()->rowCount(); ++row)
            numbers << view->model()->index(row, 0).data().toString();
        return numbers;
    }

private:
    QDialog *m_dialog;
    QComboBox *m_box;
};

/// Opens the dialog by its button's slot and does \a work in it.
void dialogOf(const Seat &seat, const std::function<void(const Number &)> &work)
{
    bool done = false;
    QTimer::singleShot(0, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        QTRY_VERIFY(QApplication::focusWidget() == dialog->findChild<QComboBox *>("number"));
        work(Number(dialog));
        done = true;
        if (dialog->isVisible())
            dialog->reject();
    });
    seat.window->protocolCallNumber();
    QVERIFY(done);
}

void rememberNumbers()
{
    Options.tlgSig = 1;
    Options.lastManualCallNumbers = QStringList{"112233", "112244", "200"};
}
} // namespace

class TestNumberDialog : public QObject
{
    Q_OBJECT

private slots:
    void beginningOfARememberedNumberIsDialledAsTyped()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [](const Number &number) {
            number.type("112");
            QCOMPARE(number.text(), QString("112"));
            number.key(Qt::Key_Return);
            QVERIFY(!number.isOpen());
        });
        QCOMPARE(seat.sent(), QString("@C@N112@"));
        QCOMPARE(Options.lastManualCallNumbers, (QStringList{"112", "112233", "112244", "200"}));
    }

    void beginningIsDialledAsTypedByTheButton()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [](const Number &number) {
            number.type("11223");
            number.dial()->click();
        });
        QCOMPARE(seat.sent(), QString("@C@N11223@"));
    }

    void rememberedNumbersAreOfferedAsAList()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [](const Number &number) {
            number.type("1");
            QCOMPARE(number.list(), (QStringList{"112233", "112244"}));
            number.type("12233");
            QCOMPARE(number.list(), QStringList{"112233"});
            number.type("9");
            QCOMPARE(number.list(), QStringList());
        });
        QCOMPARE(seat.sent(), QString());
    }

    void numberChosenFromTheListIsSeenBeforeItIsDialled()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [](const Number &number) {
            number.type("112");
            number.key(Qt::Key_Down);
            number.key(Qt::Key_Down);
            number.key(Qt::Key_Return);
            QVERIFY(number.isOpen());
            QCOMPARE(number.text(), QString("112244"));
            number.key(Qt::Key_Return);
            QVERIFY(!number.isOpen());
        });
        QCOMPARE(seat.sent(), QString("@C@N112244@"));
    }

    void escapeLeavesTheListThenTheDialog()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [](const Number &number) {
            number.type("112");
            number.key(Qt::Key_Escape);
            QVERIFY(number.isOpen());
            QCOMPARE(number.text(), QString("112"));
            number.key(Qt::Key_Escape);
            QVERIFY(!number.isOpen());
        });
        QCOMPARE(seat.sent(), QString());
    }

    // A call that comes while the dialog is open

    void incomingCallIsNotDialledInto_data()
    {
        QTest::addColumn<QString>("signal");
        QTest::addColumn<bool>("tcp");
        row("call of the adapter", "@C", false);
        row("seizure", "@E", false);
        row("call of the switch", "!>ВЫЗОВ\n", true);
    }
    void incomingCallIsNotDialledInto()
    {
        QFETCH(QString, signal);
        QFETCH(bool, tcp);
        const Seat seat(SKK, rememberNumbers);
        Options.TcpMode = tcp;
        dialogOf(seat, [&](const Number &number) {
            number.type("300");
            QVERIFY(number.dial()->isEnabled());
            ProcessSKK.processReceive(signal);
            (void)seat.sent(); // the answer to the call
            QVERIFY(!number.dial()->isEnabled());
            number.type("1");
            QVERIFY(!number.dial()->isEnabled());
            number.key(Qt::Key_Return);
            number.dial()->click();
            QVERIFY(number.isOpen());
        });
        QCOMPARE(seat.sent(), QString());
        QCOMPARE(State.dialledNumber, QString());
    }

    void openListDoesNotDialIntoACall()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [&](const Number &number) {
            number.type("112");
            ProcessSKK.processReceive("@C");
            (void)seat.sent();
            number.key(Qt::Key_Return);
            QVERIFY(number.isOpen());
        });
        QCOMPARE(seat.sent(), QString());
    }

    void endOfTheCallLetsDialAgain()
    {
        const Seat seat(SKK, rememberNumbers);
        dialogOf(seat, [&](const Number &number) {
            number.type("300");
            ProcessSKK.processReceive("@C");
            ProcessSKK.processReceive("@H");
            (void)seat.sent();
            QVERIFY(number.dial()->isEnabled());
            number.key(Qt::Key_Return);
        });
        QCOMPARE(seat.sent(), QString("@C@N300@"));
    }

    void unlockedButtonsDialIntoACall()
    {
        const Seat seat(SKK, rememberNumbers);
        Options.noLockButtonInProtocol = true;
        dialogOf(seat, [&](const Number &number) {
            number.type("300");
            ProcessSKK.processReceive("@C");
            (void)seat.sent();
            QVERIFY(number.dial()->isEnabled());
            number.key(Qt::Key_Return);
        });
        QCOMPARE(seat.sent(), QString("@C@N300@"));
    }
};

QTEST_MAIN(TestNumberDialog)
#include "test_number_dialog.moc"
