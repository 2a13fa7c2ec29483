#pragma once

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "ui/dialogs/send_tlg_dialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWindow>
#include <QtTest>

#include <memory>

/// What the line is like for the dialog.
inline void setLinkUp(bool up)
{
    TlgThread.connected = up;
}

/// A call that stands, in manual mode, so that a telegram may go to it at once.
inline void connectByHand()
{
    State.manualMode = true;
    State.connectionActive = true;
    setLinkUp(true);
}

/// \a count times the same number.
inline QStringList repeated(const QString &number, int count)
{
    QStringList numbers;
    for (int i = 0; i < count; ++i)
        numbers << number;
    return numbers;
}

/// The open dialog, with the keyboard as the system delivers it: an open list gets the keys first.
class Sending
{
public:
    explicit Sending(int procedure)
    {
        Options.processMode = procedure;
        dialog = std::make_unique<CSendTlgDialog>();
        dialog->setWindowTitle("Отправка телеграммы");
        dialog->setText("ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН  ");
        dialog->open();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog got no keyboard");
    }

    void type(const QString &keys) const
    {
        for (const QChar key : keys)
            QTest::keyClick(dialog->windowHandle(), key.toLatin1());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(dialog->windowHandle(), key, modifiers);
    }
    void paste(const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keySequence(dialog->windowHandle(), QKeySequence::Paste);
    }
    void click(const char *name) const
    {
        auto *button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(10, button->height() / 2));
    }
    /// A second passes.
    static void tick() { emit Time.signal_1sec(); }

    template <class Widget> [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog->findChild<Widget *>(name);
    }
    [[nodiscard]] QLineEdit *line() const { return find<QComboBox>("number")->lineEdit(); }
    [[nodiscard]] QString number() const { return line()->text(); }
    [[nodiscard]] QRadioButton *toLine() const { return find<QRadioButton>("toLine"); }
    [[nodiscard]] QRadioButton *toQueue() const { return find<QRadioButton>("toQueue"); }
    [[nodiscard]] QDateTimeEdit *sendTime() const { return find<QDateTimeEdit>("sendTime"); }
    [[nodiscard]] bool maySend() const { return find<QPushButton>("send")->isEnabled(); }
    [[nodiscard]] QString focus() const { return dialog->focusWidget()->objectName(); }

    std::unique_ptr<CSendTlgDialog> dialog;
};
