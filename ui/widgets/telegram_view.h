#pragma once

#include <QPlainTextEdit>

/// Shows the text of a telegram, which can be read, selected and copied, with the mouse or the keyboard
/// alone, but not changed.
class CTelegramView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit CTelegramView(QWidget *parent = nullptr);

    /// Shows \a text from its beginning.
    void showText(const QString &text);
    /// Shows another form of the same text; the view stays where it is.
    void showForm(const QString &text);
    /// Shows no text but, in grey, \a words that say why.
    void showTrouble(const QString &words);
};

/// A view by the name "text", in the letters of telegrams and as wide as their lines are, where the screen
/// has the room: for the dialogs that show what is about to go into the queue.
[[nodiscard]] CTelegramView *newTelegramView();
