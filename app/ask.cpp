#include "app/ask.h"

namespace
{
int showQuestion(QWidget *parent, const QString &title, const QString &text)
{
    return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::NoButton);
}

int showQuestionWithCancel(QWidget *parent, const QString &title, const QString &text)
{
    return QMessageBox::question(
        parent, title, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::NoButton);
}

void showWarning(const QString &text)
{
    QMessageBox box;
    box.setIcon(QMessageBox::Warning);
    box.setText(text);
    box.exec();
}

void showError(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}
} // namespace

std::function<int(QWidget *, const QString &, const QString &)> askHandler = showQuestion;
std::function<int(QWidget *, const QString &, const QString &)> askWithCancelHandler = showQuestionWithCancel;
std::function<void(const QString &)> warnHandler = showWarning;
std::function<void(QWidget *, const QString &, const QString &)> tellErrorHandler = showError;

int ask(QWidget *parent, const QString &title, const QString &text)
{
    return askHandler(parent, title, text);
}

int askWithCancel(QWidget *parent, const QString &title, const QString &text)
{
    return askWithCancelHandler(parent, title, text);
}

void warn(const QString &text)
{
    warnHandler(text);
}

void tellError(QWidget *parent, const QString &title, const QString &text)
{
    tellErrorHandler(parent, title, text);
}
