#include "app/ask.h"
#include "tests/support/row.h"
#include "tests/ui/roll/roll_menu.h"

#include <QClipboard>

namespace
{
/// Answers the question with three buttons while it lives.
class Answer
{
public:
    explicit Answer(int answer) : m_former(askWithCancelHandler)
    {
        askWithCancelHandler = [this, answer](QWidget *, const QString &title, const QString &text) {
            asked << title << text;
            return answer;
        };
    }
    ~Answer() { askWithCancelHandler = m_former; }

    QStringList asked;

private:
    std::function<int(QWidget *, const QString &, const QString &)> m_former;
};

const QStringList copyEntries{"Копировать", "Копировать прием", "Копировать передачу"};
const QString sendEntry("Буфер обмена выдать на передачу");
} // namespace

class TestProtocolClipboard : public QObject
{
    Q_OBJECT

private slots:
    void textWithoutAQuestion_data()
    {
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("sent");
        row("one line", "Привет, мир!", "ПРИВЕТ, МИР");
        row("copied from the roll", "ПРИВЕТ<>МИР<>", "ПРИВЕТ<>МИР<>");
        row("several lines with a line end of the roll", "A<>\nБ", "A<>>Б");
        row("less sign without line feed", "A<Б", "A<Б");
        row("carriage return alone", "A\rБ", "A<Б");
        row("line feeds with carriage returns", "A\r\nБ!\r\n", "A<>Б<>");
        row("less sign among line ends is dropped", "A<\r\nБ", "A<>Б");
        row("nothing", "", "");
        row("nothing that the line carries", "!", "");
    }
    void textWithoutAQuestion()
    {
        QFETCH(QString, clipboard);
        QFETCH(QString, sent);
        const Seat seat(Direct);
        const Answer answer(QMessageBox::Cancel);
        QApplication::clipboard()->setText(clipboard);
        seat.window->slotProtocolSendClipboard();
        QCOMPARE(seat.sent(), sent);
        QCOMPARE(answer.asked, QStringList());
    }

    void lineFeedsAloneAreAskedAbout_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("sent");
        row("Yes", int(QMessageBox::Yes), "A<>Б<>");
        row("No", int(QMessageBox::No), "A>Б>");
        row("Cancel", int(QMessageBox::Cancel), "");
        row("Esc", int(QMessageBox::NoButton), "");
    }
    void lineFeedsAloneAreAskedAbout()
    {
        QFETCH(int, button);
        QFETCH(QString, sent);
        const Seat seat(Direct);
        const Answer answer(button);
        QApplication::clipboard()->setText("a\nб!\n");
        seat.window->slotProtocolSendClipboard();
        QCOMPARE(seat.sent(), sent);
        const QStringList expected{"Velda", "Выполнить преобразования (ПС -> ВК+ПС) во вставляемом тексте?"};
        QCOMPARE(answer.asked, expected);
    }

    void questionHasThreeButtons()
    {
        const Seat seat(Direct);
        QStringList buttons;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
                buttons << (box->button(button) != nullptr ? "да" : "нет");
            QTest::keyClick(box, Qt::Key_Escape);
        });
        QApplication::clipboard()->setText("a\nб");
        seat.window->slotProtocolSendClipboard();
        QCOMPARE(buttons, (QStringList{"да", "да", "да"}));
        QCOMPARE(seat.sent(), QString());
    }

    void copyFromTheRollComesBackAsItWasSent()
    {
        const Seat seat(Direct);
        Log.lines = QStringList{QChar(2) + QString("|ПРИВЕТ<>"), QChar(2) + QString("#12<>"), QString()};
        seat.view()->setDate(Time.date);
        seat.view()->setFocus();
        QTest::mousePress(seat.view(), Qt::LeftButton, {}, seat.view()->lineRect(0).center());
        QMouseEvent drag(QEvent::MouseMove, seat.view()->lineRect(1).center() + QPoint(9, 0), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(seat.view(), &drag);
        seat.window->slotProtocolCopy();
        QCOMPARE(QApplication::clipboard()->text(), QString("ПРИВЕТ<>12<>"));
        seat.window->slotProtocolSendClipboard();
        QCOMPARE(seat.sent(), QString("ПРИВЕТ<>12<>"));
    }

    // Context menu

    void menuOffersCopiesAndTheClipboard()
    {
        const Seat seat(Direct);
        QApplication::clipboard()->setText("ТЕКСТ");
        QCOMPARE(rollMenuEntries(seat), copyEntries + QStringList{sendEntry});
    }

    void emptyClipboardIsNotOffered()
    {
        const Seat seat(Direct);
        QApplication::clipboard()->clear();
        QCOMPARE(rollMenuEntries(seat), copyEntries);
    }

    void clipboardIsNotOfferedInAutomaticMode()
    {
        const Seat seat(Direct);
        QApplication::clipboard()->setText("ТЕКСТ");
        State.setAutomatic(true);
        QCOMPARE(rollMenuEntries(seat), copyEntries);
    }

    void entriesDoWhatTheySay()
    {
        const Seat seat(Direct);
        Log.lines = QStringList{QChar(1) + QString("A") + QChar(2) + "B<>"};
        seat.view()->setDate(Time.date);
        seat.view()->selectAndShowLine(0);
        const QStringList expected{"AB<>", "A", "B<>"};
        for (int i = 0; i < expected.size(); ++i) {
            rollMenuEntries(seat, copyEntries[i]);
            QCOMPARE(QApplication::clipboard()->text(), expected[i]);
        }
        QApplication::clipboard()->setText("ТЕКСТ");
        rollMenuEntries(seat, sendEntry);
        QCOMPARE(seat.sent(), QString("ТЕКСТ"));
    }
};

QTEST_MAIN(TestProtocolClipboard)
#include "test_protocol_clipboard.moc"
