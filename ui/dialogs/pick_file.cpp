#include "ui/dialogs/pick_file.h"

#include <QFileDialog>

namespace
{
QString showFileDialog(QWidget *parent, const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}
} // namespace

std::function<QString(QWidget *, const QString &, const QString &)> pickFileHandler = showFileDialog;

QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter)
{
    return pickFileHandler(parent, title, filter);
}
