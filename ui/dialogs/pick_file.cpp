#include "ui/dialogs/pick_file.h"

#include "ui/dialogs/file_dialog_with_codepage_select.h"

#include <QFileDialog>
#include <QFileInfo>

namespace
{
QString showFileDialog(QWidget *parent, const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}

QString showSaveDialog(QWidget *parent, const QString &title, const QString &path, const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, title, path, filter);
}

CodedFile showCodedSaveDialog(QWidget *parent, const QString &title, const CodedFile &suggested)
{
    CFileDialogWithCodepageSelect dialog(parent, title);
    dialog.offerSaving(suggested.path);
    dialog.setCodepage(nameOf(suggested.coding));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return {dialog.selectedFiles().value(0), dialog.coding()};
}
} // namespace

std::function<QString(QWidget *, const QString &, const QString &)> pickFileHandler = showFileDialog;
std::function<QString(QWidget *, const QString &, const QString &, const QString &)> pickSaveHandler =
    showSaveDialog;
std::function<CodedFile(QWidget *, const QString &, const CodedFile &)> pickCodedSaveHandler =
    showCodedSaveDialog;

QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter)
{
    return pickFileHandler(parent, title, filter);
}

QString pickFileToSave(QWidget *parent, const QString &title, const QString &path, const QString &filter)
{
    return pickSaveHandler(parent, title, path, filter);
}

CodedFile pickCodedFileToSave(QWidget *parent, const QString &title, const CodedFile &suggested)
{
    return pickCodedSaveHandler(parent, title, suggested);
}
