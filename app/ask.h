#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>

class QWidget;

/// Asks the operator with the buttons Yes and No, none of them the default, and waits for the answer:
/// QMessageBox::Yes, or anything else for a refusal (Esc and the box's cross included). Every question of
/// the program comes through here, so that a test can answer it beforehand. Main thread.
[[nodiscard]] int ask(QWidget *parent, const QString &title, const QString &text);

/// The same with a third button, Cancel, which Esc and the box's cross mean: QMessageBox::Yes, No or Cancel.
[[nodiscard]] int askWithCancel(QWidget *parent, const QString &title, const QString &text);

/// Shows a box with the icon Warning, without parent or title, until the operator closes it.
void warn(const QString &text);

/// Shows a box with the icon Critical and the button OK until the operator closes it. The text may come from
/// the line: it is shown letter by letter.
void tellError(QWidget *parent, const QString &title, const QString &text);

/// What ask(), askWithCancel(), warn() and tellError() call. A test puts its own functions here and restores
/// the former ones.
extern std::function<int(QWidget *parent, const QString &title, const QString &text)> askHandler;
extern std::function<int(QWidget *parent, const QString &title, const QString &text)> askWithCancelHandler;
extern std::function<void(const QString &text)> warnHandler;
extern std::function<void(QWidget *parent, const QString &title, const QString &text)> tellErrorHandler;
