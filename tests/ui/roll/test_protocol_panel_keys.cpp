#include "tests/support/row.h"
#include "tests/ui/roll/seat.h"
#include "tests/ui/window/station.h"
#include "ui/sound.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDateEdit>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>

namespace
{
struct Key {
    int key;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

QVector<Key> typedKeys()
{
    QVector<Key> keys;
    for (const QChar c : QStringLiteral("aZ09@|#&\"<>.,-+:=?!()/' "))
        keys.append({c.toUpper().unicode(), Qt::NoModifier, QString(c)});
    for (const QChar c : QStringLiteral("аЯёъщ"))
        keys.append({c.toUpper().unicode(), Qt::NoModifier, QString(c)});
    keys.append({Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A")});
    keys.append({Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")});
    keys.append({Qt::Key_Return, Qt::ShiftModifier, QStringLiteral("\r")});
    keys.append({Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b")});
    keys.append({Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t")});
    keys.append({Qt::Key_Backtab, Qt::ShiftModifier, QString()});
    keys.append({Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b")});
    keys.append({Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f")});
    keys.append({Qt::Key_Insert, Qt::NoModifier, QString()});
    return keys;
}

// A control that ignores a key must not lend it to the roll, which knows these.
QVector<Key> movingKeys()
{
    QVector<Key> keys;
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End,
                          Qt::Key_PageUp, Qt::Key_PageDown})
        for (const int modifier :
             {int(Qt::NoModifier), int(Qt::ShiftModifier), int(Qt::ControlModifier), int(Qt::KeypadModifier)})
            keys.append({key, Qt::KeyboardModifiers(modifier), QString()});
    for (int key = Qt::Key_F1; key <= Qt::Key_F12; ++key)
        keys.append({key, Qt::NoModifier, QString()});
    return keys;
}

QVector<Key> modifiedKeys()
{
    QVector<Key> keys;
    for (const int key : {int(Qt::Key_E), int(Qt::Key_H), int(Qt::Key_L), int(Qt::Key_V), int(Qt::Key_P),
                          int(Qt::Key_C), int(Qt::Key_A), 0x0423, 0x0420, 0x0414, 0x041C, 0x0417})
        keys.append({key, Qt::ControlModifier, QString(QChar(key & 0x1f))});
    keys.append({Qt::Key_Tab, Qt::ControlModifier, QStringLiteral("\t")});
    keys.append({Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, QString()});
    keys.append({Qt::Key_Q, Qt::AltModifier, QStringLiteral("q")});
    for (const QChar c : QStringLiteral("0189+-*/."))
        keys.append({c.unicode(), Qt::KeypadModifier, QString(c)});
    keys.append({Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r")});
    return keys;
}

QVector<Key> everyKey()
{
    return typedKeys() + movingKeys() + modifiedKeys();
}

/// Counts the keys that reach a widget.
class KeyCounter : public QObject
{
public:
    explicit KeyCounter(QObject *watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::KeyPress ? 1 : 0;
        return false;
    }
    int count = 0;
};

/// A seat whose panel is open and has all of its switches.
class PanelSeat : public Seat
{
public:
    explicit PanelSeat(int procedure)
        : Seat(procedure, [] {
              Options.nationalLanguageUse = 1;
              Options.enableProtectedSend = true;
          })
    {
        open();
        TlgThread.sendBuffer.text = QStringLiteral("ТЕКСТ");
    }
    void open() const { view()->findChild<QWidget *>(QStringLiteral("protocolSearchRow"))->show(); }
    [[nodiscard]] QWidget *control(const QByteArray &name) const
    {
        return view()->findChild<QWidget *>(QLatin1String(name));
    }
    /// Gives the keyboard to a control as the Tab key does.
    QWidget *focus(const QByteArray &name) const
    {
        open();
        window->tabWidget->setCurrentIndex(0);
        QWidget *target = control(name);
        target->setFocus(Qt::TabFocusReason);
        return target;
    }
};

const char *const controls[] = {"protocolDate",      "protocolMore",     "protocolSearch",
                                "protocolRegisters", "protocolInfo",     "protocolCommands",
                                "protocolSplit",     "protocolNational", "protocolSearchRow",
                                "protocolPanel",     "protocolScroll"};
} // namespace

/// Only keys of the roll itself are the line's: those of the panel above it stay there.
class TestProtocolPanelKeys : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }

    void panelsKeyStaysInThePanel_data()
    {
        QTest::addColumn<int>("procedure");
        QTest::addColumn<QByteArray>("control");
        const char *const names[] = {"CKS", "SKK", "direct"};
        for (int procedure = 0; procedure < 3; ++procedure)
            for (const QByteArray control : controls)
                if (procedure == SKK || control != "protocolCommands")
                    row((names[procedure] + QByteArray(", ") + control).constData(), procedure, control);
    }
    void panelsKeyStaysInThePanel()
    {
        QFETCH(int, procedure);
        QFETCH(QByteArray, control);
        const PanelSeat seat(procedure);
        const QSignalSpy atTheRoll(seat.view(), &CProtocolWidget::KeyPressed);
        const KeyCounter atTheWindow(seat.window.get());
        for (const Key &key : everyKey()) {
            QWidget *target = seat.focus(control);
            if (target->hasFocus())
                target = QApplication::focusWidget(); // the date's own line edit
            QKeyEvent event(QEvent::KeyPress, key.key, key.modifiers, key.text);
            QApplication::sendEvent(target, &event);
            if (QWidget *popup = QApplication::activePopupWidget())
                popup->close();
            const QByteArray what = QKeySequence(key.key | int(key.modifiers)).toString().toUtf8();
            QVERIFY2(TlgThread.sendBuffer.text == QStringLiteral("ТЕКСТ"), what.constData());
            QVERIFY2(!TlgThread.protectedMode, what.constData());
            QVERIFY2(atTheRoll.isEmpty(), what.constData());
            QVERIFY2(atTheWindow.count == 0, what.constData());
        }
    }

    void everyControlOfThePanelIsLookedAt()
    {
        const PanelSeat seat(SKK);
        QSet<QByteArray> known;
        for (const QByteArray control : controls)
            known << control;
        for (const QWidget *widget : seat.control("protocolPanel")->findChildren<QWidget *>())
            if (widget->focusPolicy() != Qt::NoFocus && widget->window() == seat.window.get() &&
                widget->focusProxy() == nullptr && widget->parentWidget()->objectName() != "protocolDate")
                QVERIFY2(known.contains(widget->objectName().toUtf8()), qPrintable(widget->objectName()));
    }

    void keysGoToTheLineOnceTheRollHasThem()
    {
        PanelSeat seat(Direct);
        seat.clear();
        seat.focus("protocolSearch");
        seat.type(QStringLiteral("abc"));
        seat.view()->setFocus();
        seat.type(QStringLiteral("xyz"));
        QCOMPARE(seat.sent(), QString("XYZ"));
        QCOMPARE(seat.view()->findChild<QLineEdit *>("protocolSearch")->text(), QString("abc"));
    }

    void controlsDoTheirOwnWorkWithTheirKeys()
    {
        const PanelSeat seat(Direct);
        seat.focus("protocolRegisters");
        seat.press(Qt::Key_Space, {}, " ");
        QVERIFY(seat.view()->showRegisters());
        seat.focus("protocolDate");
        seat.press(Qt::Key_Down);
        QCOMPARE(seat.view()->date(), QDate(2026, 7, 30));
        seat.view()->reset();
        auto *field = static_cast<QLineEdit *>(seat.focus("protocolSearch"));
        seat.type(QStringLiteral("7"));
        QCOMPARE(seat.view()->firstSelectedLine(), 7);
        seat.press(Qt::Key_Return, {}, "\r");
        QCOMPARE(seat.view()->firstSelectedLine(), 17);
        field->clear();
        QApplication::clipboard()->setText("19");
        seat.press(Qt::Key_V, Qt::ControlModifier, "\x16");
        QCOMPARE(field->text(), QString("19"));
        seat.focus("protocolMore");
        seat.press(Qt::Key_Space, {}, " ");
        QVERIFY(seat.control("protocolSearchRow")->isHidden());
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
    }

    void tabTravelsThroughThePanelAndBack()
    {
        const PanelSeat seat(SKK);
        seat.focus("protocolDate");
        QStringList way;
        for (int i = 0; i < 20 && QApplication::focusWidget()->objectName() != "protocolNational"; ++i) {
            seat.press(Qt::Key_Tab, {}, "\t");
            way << QApplication::focusWidget()->objectName();
        }
        // The date's three parts come first, which the field counts itself.
        QCOMPARE(way.mid(way.indexOf("protocolMore")).join(' '),
                 QString("protocolMore protocolSearch protocolRegisters protocolInfo protocolCommands "
                         "protocolSplit protocolNational"));
        for (int i = 0; i < 20 && QApplication::focusWidget() != seat.view(); ++i)
            seat.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(seat.view()->hasFocus());
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
    }

    void closedSearchRowGivesTheKeyboardToTheRoll()
    {
        const PanelSeat seat(Direct);
        seat.focus("protocolSearch");
        QTest::mouseClick(seat.control("protocolMore"), Qt::LeftButton);
        QVERIFY(seat.control("protocolSearchRow")->isHidden());
        QVERIFY(seat.view()->hasFocus());
    }

    // Keys of the whole window

    void keysOfTheWindowWorkFromThePanel_data()
    {
        QTest::addColumn<QByteArray>("control");
        for (const QByteArray control : controls)
            row(control.constData(), control);
    }
    void keysOfTheWindowWorkFromThePanel()
    {
        QFETCH(QByteArray, control);
        const PanelSeat seat(SKK);
        const Answer answer(QMessageBox::No);
        const auto press = [&](int key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(seat.focus(control), Qt::Key(key), modifiers);
        };
        press(Qt::Key_A, Qt::AltModifier);
        QVERIFY(!State.manualMode);
        press(Qt::Key_A, Qt::AltModifier);
        QVERIFY(State.manualMode);
        press(Qt::Key_X, Qt::AltModifier);
        QCOMPARE(answer.asked.size(), 2);
        sound.play(QStringLiteral(VELDA_SOUND_DIR "/input.wav"), CSound::Loop);
        press(Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(sound.playingFileName().isEmpty());
        QFont font = QApplication::font();
        font.setPointSize(10);
        QApplication::setFont(font);
        press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
        QCOMPARE(QApplication::font().pointSize(), 11);
        press(Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
        QCOMPARE(QApplication::font().pointSize(), 10);
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
        if (control == "protocolDate")
            return; // has a use of its own for Ctrl+Tab
        press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(seat.window->tabWidget->currentIndex(), 1);
        press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(seat.window->tabWidget->currentIndex(), 5);
        QCOMPARE(TlgThread.sendBuffer.text, QString("ТЕКСТ"));
    }

private:
    const QFont m_font = QApplication::font();
};

QTEST_MAIN(TestProtocolPanelKeys)
#include "test_protocol_panel_keys.moc"
