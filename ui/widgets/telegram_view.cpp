#include "ui/widgets/telegram_view.h"

#include "app/options.h"
#include "text/utils.h"

#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>
#include <QTextOption>

namespace
{
constexpr int LineLength = 70; // characters of a telegram
} // namespace

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

CTelegramView *newTelegramView()
{
    auto *view = new CTelegramView;
    view->setObjectName(QStringLiteral("text"));
    view->setFont(Options.tlgFont);
    const int most = QGuiApplication::primaryScreen()->availableSize().width() * 2 / 3;
    view->setMinimumWidth(qMin(most, CUtils::txtGUIWidth(LineLength, Options.tlgFont)));
    return view;
}
