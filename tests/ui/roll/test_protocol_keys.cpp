#include "tests/support/row.h"
#include "tests/ui/roll/seat.h"

#include <QLineEdit>
#include <QScrollBar>

Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

namespace
{
void everyProcedure()
{
    QTest::addColumn<int>("procedure");
    row("CKS", int(CKS));
    row("SKK", int(SKK));
    row("direct", int(Direct));
}
} // namespace

class TestProtocolKeys : public QObject
{
    Q_OBJECT

private slots:
    // Typed text

    void typedTextGoesToTheLine_data() { everyProcedure(); }
    void typedTextGoesToTheLine()
    {
        QFETCH(int, procedure);
        const Seat seat(procedure);
        seat.type(QStringLiteral("Привет 12, abc?"));
        QCOMPARE(seat.sent(), QString("ПРИВЕТ 12, ABC?"));
    }

    void keyGoesOutInItsForm_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("sent");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        row("letter", int(Qt::Key_A), none, "a", "A");
        row("Shift", int(Qt::Key_A), Qt::KeyboardModifiers(Qt::ShiftModifier), "A", "A");
        row("Russian letter", 0x0416, none, "ж", "Ж");
        row("blank", int(Qt::Key_Space), none, " ", " ");
        row("Enter sends CR LF", int(Qt::Key_Return), none, "\r", "<>");
        row("register mark", int(Qt::Key_Bar), none, "|", "|");
        row("at sign goes alone", int(Qt::Key_At), none, "@", "@");
        row("at sign with more", int(Qt::Key_At), none, "@H", "@");
        row("several characters", 0, none, "где!", "ГДЕ");
        row("Ч", 0x0427, none, "ч", "Ч");
        row("Ъ is dropped", 0x042A, none, "ъ", "");
        row("Ё is dropped", 0x0401, none, "ё", "");
        row("! is dropped", int(Qt::Key_Exclam), none, "!", "");
        row("Backspace", int(Qt::Key_Backspace), none, "\b", "");
        row("Delete", int(Qt::Key_Delete), none, "\x7f", "");
        row("no text", int(Qt::Key_F5), none, "", "");
        row("keypad digit", int(Qt::Key_5), Qt::KeyboardModifiers(Qt::KeypadModifier), "5", "");
        row("keypad Enter", int(Qt::Key_Enter), Qt::KeyboardModifiers(Qt::KeypadModifier), "\r", "");
        row("Alt", int(Qt::Key_Q), Qt::KeyboardModifiers(Qt::AltModifier), "q", "");
        row("Ctrl", int(Qt::Key_Q), Qt::KeyboardModifiers(Qt::ControlModifier), "q", "");
    }
    void keyGoesOutInItsForm()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, text);
        QFETCH(QString, sent);
        const Seat seat(Direct);
        seat.press(key, modifiers, text);
        QCOMPARE(seat.sent(), sent);
    }

    void commandsOfTheAdapterCanBeTyped()
    {
        const Seat seat(SKK);
        seat.type(QStringLiteral("@n12+@"));
        QCOMPARE(seat.sent(), QString("@N12+@"));
    }

    void nationalLettersAreMasked()
    {
        const Seat seat(Direct, [] { Options.nationalLanguageUse = 1; });
        seat.press(0, {}, QStringLiteral("ә"));
        QCOMPARE(seat.sent(), QString("???"));
    }

    void nationalLettersAreDroppedWithoutTheLanguage()
    {
        const Seat seat(Direct);
        seat.press(0, {}, QStringLiteral("ә"));
        QCOMPARE(seat.sent(), QString());
    }

    void keyWithNothingLeftFallsThroughToNavigation()
    {
        const Seat seat(Direct);
        seat.press(Qt::Key_Home, {}, QStringLiteral("!"));
        QCOMPARE(seat.top(), 0);
        seat.press(Qt::Key_End, {}, QStringLiteral("Я"));
        QCOMPARE(seat.sent(), QString("Я"));
    }

    void typingBringsTheRollToItsEnd()
    {
        const Seat seat(Direct);
        seat.press(Qt::Key_Home);
        QVERIFY(!seat.view()->isLastString());
        seat.type(QStringLiteral("а"));
        QVERIFY(seat.view()->isLastString());
        QCOMPARE(seat.sent(), QString("А"));
    }

    // Keys with Ctrl

    void controlKeys_data()
    {
        QTest::addColumn<int>("procedure");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("sent");
        row("Ctrl+E in CKS", int(CKS), int(Qt::Key_E), "");
        row("Ctrl+E in SKK", int(SKK), int(Qt::Key_E), "@E");
        row("Ctrl+E in direct", int(Direct), int(Qt::Key_E), "");
        row("Ctrl+L in CKS", int(CKS), int(Qt::Key_L), "@L");
        row("Ctrl+L in SKK", int(SKK), int(Qt::Key_L), "@L");
        row("Ctrl+L in direct", int(Direct), int(Qt::Key_L), "@L");
        row("Ctrl+V in CKS", int(CKS), int(Qt::Key_V), "@V");
        row("Ctrl+V in SKK", int(SKK), int(Qt::Key_V), "@V");
        row("Ctrl+V in direct", int(Direct), int(Qt::Key_V), "@V");
        row("Ctrl+У in SKK", int(SKK), 0x0423, "@E");
        row("Ctrl+Д in SKK", int(SKK), 0x0414, "@L");
        row("Ctrl+М in SKK", int(SKK), 0x041C, "@V");
    }
    void controlKeys()
    {
        QFETCH(int, procedure);
        QFETCH(int, key);
        QFETCH(QString, sent);
        const Seat seat(procedure);
        seat.press(key, Qt::ControlModifier, QString(QChar(key & 0x1f)));
        QCOMPARE(seat.sent(), sent);
        seat.press(key, Qt::ControlModifier | Qt::ShiftModifier, QString(QChar(key & 0x1f)));
        QCOMPARE(seat.sent(), QString()); // exactly Ctrl
        State.setAutomatic(true);
        seat.press(key, Qt::ControlModifier, QString(QChar(key & 0x1f)));
        QCOMPARE(seat.sent(), QString());
    }

    void controlHHangsUpInTheSwitchedNetworkOnly_data() { everyProcedure(); }
    void controlHHangsUpInTheSwitchedNetworkOnly()
    {
        QFETCH(int, procedure);
        const Seat seat(procedure);
        TlgThread.sendBuffer.text = "ТЕКСТ";
        seat.press(Qt::Key_H, Qt::ControlModifier, "\b");
        QCOMPARE(seat.sent(), QString(procedure == SKK ? "@H" : "ТЕКСТ"));
        State.setAutomatic(true);
        TlgThread.sendBuffer.text = "ТЕКСТ";
        seat.press(Qt::Key_H, Qt::ControlModifier, "\b");
        QCOMPARE(seat.sent(), QString("ТЕКСТ"));
    }

    void controlPTurnsGuaranteedTransfer_data()
    {
        QTest::addColumn<int>("procedure");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("works");
        row("CKS", int(CKS), true, false);
        row("SKK", int(SKK), true, true);
        row("direct", int(Direct), true, true);
        row("SKK, not enabled", int(SKK), false, false);
        row("direct, not enabled", int(Direct), false, false);
    }
    void controlPTurnsGuaranteedTransfer()
    {
        QFETCH(int, procedure);
        QFETCH(bool, enabled);
        QFETCH(bool, works);
        const Seat seat(procedure, [enabled] { Options.enableProtectedSend = enabled; });
        seat.press(Qt::Key_P, Qt::ControlModifier, "\x10");
        QCOMPARE(bool(TlgThread.protectedMode), works);
        seat.press(0x0417, Qt::ControlModifier, "\x10"); // З, on the same key
        QCOMPARE(bool(TlgThread.protectedMode), false);
        State.setAutomatic(true);
        seat.press(Qt::Key_P, Qt::ControlModifier, "\x10");
        QCOMPARE(bool(TlgThread.protectedMode), false);
    }

    // Navigation

    void navigationMovesTheRoll_data()
    {
        QTest::addColumn<bool>("automatic");
        row("manual", false);
        row("automatic", true);
    }
    void navigationMovesTheRoll()
    {
        QFETCH(bool, automatic);
        const Seat seat(CKS);
        State.setAutomatic(automatic);
        const int end = seat.top();
        const int page = seat.view()->linesOnScreen();
        seat.press(Qt::Key_Up);
        QCOMPARE(seat.top(), end - 1);
        seat.press(Qt::Key_Down);
        QCOMPARE(seat.top(), end);
        seat.press(Qt::Key_PageUp);
        QCOMPARE(seat.top(), end - page);
        seat.press(Qt::Key_PageDown);
        QCOMPARE(seat.top(), end);
        seat.press(Qt::Key_Home);
        QCOMPARE(seat.top(), 0);
        seat.press(Qt::Key_End);
        QCOMPARE(seat.top(), end);
        QCOMPARE(seat.sent(), QString());
    }

    void keypadArrowsMoveToo()
    {
        const Seat seat(CKS);
        seat.press(Qt::Key_Home, Qt::KeypadModifier);
        QCOMPARE(seat.top(), 0);
    }

    void automaticModeSendsNoPrintableKey()
    {
        const Seat seat(Direct);
        State.setAutomatic(true);
        seat.type(QStringLiteral("Привет@"));
        seat.press(Qt::Key_Return, {}, "\r");
        QCOMPARE(seat.sent(), QString());
    }

    void upAtTheFirstLineOpensTheDayBefore()
    {
        const Seat seat(Direct);
        seat.press(Qt::Key_Home);
        seat.press(Qt::Key_Up);
        QCOMPARE(seat.view()->date(), QDate(2026, 7, 30));
        seat.press(Qt::Key_Down);
        QCOMPARE(seat.view()->date(), QDate(2026, 7, 31));
    }

    // Esc in its three states

    void escWithTheRollScrolledBackBringsItToTheEnd()
    {
        const Seat seat(Direct);
        TlgThread.sendBuffer.text = "ТЕКСТ";
        seat.press(Qt::Key_Home);
        seat.press(Qt::Key_Escape, {}, "\x1b");
        QVERIFY(seat.view()->isLastString());
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
        seat.press(Qt::Key_Escape, {}, "\x1b");
        QCOMPARE(TlgThread.sendBuffer.text, QString());
    }

    void escOnAnotherDayReturnsToToday()
    {
        const Seat seat(Direct);
        TlgThread.sendBuffer.text = "ТЕКСТ";
        seat.view()->setDate(QDate(2026, 7, 30));
        seat.press(Qt::Key_Escape, {}, "\x1b");
        QCOMPARE(seat.view()->date(), QDate(2026, 7, 31));
        QVERIFY(seat.view()->isLastString());
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
    }

    void escInAutomaticModeEmptiesNothing()
    {
        const Seat seat(Direct);
        State.setAutomatic(true);
        TlgThread.sendBuffer.text = "ТЕКСТ";
        seat.press(Qt::Key_Escape, {}, "\x1b");
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
        seat.press(Qt::Key_Home);
        seat.press(Qt::Key_Escape, {}, "\x1b");
        QVERIFY(seat.view()->isLastString());
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
    }

    // The window around the roll

    void clickOnASwitchLeavesTheKeyboardWithTheRoll()
    {
        const Seat seat(Direct);
        auto *box = seat.view()->findChild<QCheckBox *>("protocolRegisters");
        box->parentWidget()->show();
        QTest::mouseClick(box, Qt::LeftButton);
        QVERIFY(seat.view()->hasFocus());
        auto *button = seat.window->findChild<QPushButton *>("buttonSendString");
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    }

    void textTypedIntoTheSearchLineStaysThere()
    {
        const Seat seat(Direct);
        auto *field = seat.view()->findChild<QLineEdit *>("protocolSearch");
        field->parentWidget()->show();
        field->setFocus();
        seat.type(QStringLiteral("слово"));
        QCOMPARE(field->text(), QString("слово"));
        QCOMPARE(seat.sent(), QString());
    }

    void windowOpensWithTheKeyboardAtTheRoll()
    {
        const Desk desk;
        Options.processMode = Direct;
        FormMain window;
        window.firstStart = false;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTRY_VERIFY(window.protocolWidget->hasFocus());
    }
};

QTEST_MAIN(TestProtocolKeys)
#include "test_protocol_keys.moc"
