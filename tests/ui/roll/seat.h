#pragma once

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "text/mtk2.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QtTest>

#include <functional>
#include <memory>

/// The operator's seat: the real window on the screen with the keyboard at its roll, in manual mode, on a
/// desk of its own with 200 lines today and a few yesterday. No thread runs.
class Seat
{
public:
    explicit Seat(int procedure, const std::function<void()> &prepare = {})
    {
        Options.processMode = procedure;
        if (prepare)
            prepare();
        initMTK2Table();
        desk.write(QStringLiteral("prt/20260730.prt"), "\1A<>\n\1B<>");
        for (int i = 0; i < 200; ++i)
            Log.lines << QChar(ProtocolReceived) + QString::number(i) + QStringLiteral("<>");
        window = std::make_unique<FormMain>();
        window->firstStart = false;
        mainWindow = window.get();
        State.setAutomatic(false);
        window->show();
        window->activateWindow();
        view()->setFocus();
        if (!QTest::qWaitForWindowActive(window.get()) || !view()->hasFocus())
            qFatal("the window got no keyboard");
        view()->reset();
        clear();
    }

    [[nodiscard]] CProtocolWidget *view() const { return window->protocolWidget; }
    [[nodiscard]] int top() const { return view()->findChild<QScrollBar *>()->value(); }
    void clear() { TlgThread.sendBuffer.text.clear(); }
    /// Presses a key on whatever has the focus.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               const QString &text = QString()) const
    {
        QWidget *target = QApplication::focusWidget();
        QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(target, &down);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
        QApplication::sendEvent(target, &up);
    }
    void type(const QString &text) const
    {
        for (const QChar c : text)
            press(c.toUpper().unicode(), Qt::NoModifier, QString(c));
    }
    /// What is in the send buffer; takes it.
    [[nodiscard]] QString sent() const { return desk.sent(); }

    Desk desk;
    std::unique_ptr<FormMain> window;
};
