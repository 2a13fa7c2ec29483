#include "ui/dialogs/pick_file.h"

#include "ui/dialogs/file_dialog_with_codepage_select.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace
{
/// Relative paths of the whole program begin in the current directory.
class CurrentDirectoryKept
{
public:
    CurrentDirectoryKept() = default;
    ~CurrentDirectoryKept() { QDir::setCurrent(m_path); }
    CurrentDirectoryKept(const CurrentDirectoryKept &) = delete;
    CurrentDirectoryKept &operator=(const CurrentDirectoryKept &) = delete;

private:
    const QString m_path = QDir::currentPath();
};

QString showFileDialog(QWidget *parent, const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}

QString showSaveDialog(QWidget *parent, const QString &title, const QString &path, const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, title, path, filter);
}

QString showFileDialogIn(QWidget *parent, const QString &title, const QString &directory,
                         const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, directory, filter);
}

FilteredFile showNameDialog(QWidget *parent, const QString &title, const QString &directory,
                            const QString &filters)
{
    FilteredFile file;
    file.path = QFileDialog::getSaveFileName(parent, title, directory, filters, &file.filter);
    return file;
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
std::function<QString(QWidget *, const QString &, const QString &, const QString &)> pickFileInHandler =
    showFileDialogIn;
std::function<FilteredFile(QWidget *, const QString &, const QString &, const QString &)> pickNameHandler =
    showNameDialog;
std::function<CodedFile(QWidget *, const QString &, const CodedFile &)> pickCodedSaveHandler =
    showCodedSaveDialog;

QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter)
{
    const CurrentDirectoryKept kept;
    return pickFileHandler(parent, title, filter);
}

QString pickFileToSave(QWidget *parent, const QString &title, const QString &path, const QString &filter)
{
    const CurrentDirectoryKept kept;
    return pickSaveHandler(parent, title, path, filter);
}

QString pickFileToOpenIn(QWidget *parent, const QString &title, const QString &directory,
                         const QString &filter)
{
    const CurrentDirectoryKept kept;
    return pickFileInHandler(parent, title, directory, filter);
}

FilteredFile pickNameToSave(QWidget *parent, const QString &title, const QString &directory,
                            const QString &filters)
{
    const CurrentDirectoryKept kept;
    return pickNameHandler(parent, title, directory, filters);
}

CodedFile pickCodedFileToSave(QWidget *parent, const QString &title, const CodedFile &suggested)
{
    const CurrentDirectoryKept kept;
    return pickCodedSaveHandler(parent, title, suggested);
}
