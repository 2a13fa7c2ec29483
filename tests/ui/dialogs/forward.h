#pragma once

#include "app/options.h"
#include "ui/dialogs/re_send_tlg_dialog.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>
#include <QtTest>

#include <memory>

const QString Telegram = "ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН  ";

/// The open dialog, with the keyboard as the system delivers it: an open list gets the keys first.
class Forward
{
public:
    explicit Forward(int procedure, const QString &text = Telegram)
    {
        Options.processMode = procedure;
        dialog = std::make_unique<CReSendTlgDialog>(text);
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
    template <class Widget> [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog->findChild<Widget *>(name);
    }
    [[nodiscard]] QComboBox *combo(const char *name) const { return find<QComboBox>(name); }
    [[nodiscard]] QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    [[nodiscard]] bool mayGo() const { return button("forward")->isEnabled(); }
    [[nodiscard]] QString fault() const { return find<QLabel>("fault")->text(); }
    [[nodiscard]] QString focus() const { return dialog->focusWidget()->objectName(); }
    void click(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    std::unique_ptr<CReSendTlgDialog> dialog;
};

inline QStringList items(const QComboBox *combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}
