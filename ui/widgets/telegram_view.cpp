#include "ui/widgets/telegram_view.h"

#include <QScrollBar>
#include <QTextOption>

CTelegramView::CTelegramView(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false); // it would keep former texts
    setTabChangesFocus(true);
    // Breaking a long run of letters anywhere would take seconds: the time grows with the square of its
    // length.
    setWordWrapMode(QTextOption::WordWrap);
}

void CTelegramView::showText(const QString &text)
{
    setPlaceholderText(QString());
    setPlainText(text);
}

void CTelegramView::showForm(const QString &text)
{
    const int row = verticalScrollBar()->value();
    const int column = horizontalScrollBar()->value();
    showText(text);
    verticalScrollBar()->setValue(row);
    horizontalScrollBar()->setValue(column);
}

void CTelegramView::showTrouble(const QString &words)
{
    clear();
    setPlaceholderText(words);
}
