// Chapter of FormMain: what the editor reads and writes. A file that cannot be read or written stops nothing:
// a line of the journal tells it.

#include "app/ask.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "records/protocol.h"
#include "text/file_coding.h"
#include "text/telegram_form.h"
#include "text/utils.h"
#include "ui/dialogs/perforator_in_dialog.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/dialogs/pick_file.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

#include <iterator>
#include <optional>

namespace
{
constexpr qint64 LargestText = 16LL * 1024 * 1024; ///< bytes; a larger file holds the window up for seconds

const QString AllFiles = QStringLiteral("Все (*.*)");
const QString TextFilter = QStringLiteral("Текст (*.txt)");
const QString TemplateFilters = QStringLiteral("Текстовые (*.txt);;Все (*.*)");
const QString TextSuffix = QStringLiteral(".txt");
const QString SaveTitle = QStringLiteral("Сохранение");

/// Where a dialog begins: in the place that the settings name, else where the last one of its kind ended.
QString placeToBegin(const QString &last)
{
    const QString &set = Options.pathForSaveLoadInEditop;
    return !set.isEmpty() && QFileInfo(set).isDir() ? set : last;
}

QString templateDirectory()
{
    const int form = Options.editorInterfaceMode;
    const bool known = form >= 0 && form < int(std::size(Options.interfaceModes));
    return State.pathShablons() + QLatin1Char('/') + Options.interfaceModes[known ? form : MessageForm].name;
}

void tellFailure(const QString &what, const QString &path)
{
    Log.addCacheServiceString(what + shownName(path), ProtocolError, true);
}

void makeTemplateDirectory()
{
    const QString directory = templateDirectory();
    QDir dir;
    dir.mkdir(State.pathShablons());
    dir.mkdir(directory);
    if (!QFileInfo(directory).isDir())
        tellFailure(QStringLiteral("Ошибка создания каталога "), directory);
}

QString templateText(const QByteArray &content)
{
    // The store writes UTF-8. In few Russian letters among foreign ones, which the fields may hold, a guess
    // would see another page.
    if (isUtf8(content))
        return QString::fromUtf8(content.constData());
    // A field would keep a zero, and the file that it is written to would end there.
    return CUtils::CorrectCodePageToUtf8(content).remove(QChar(QChar::Null));
}

std::optional<QString> readText(const QString &path, QString (*decode)(const QByteArray &))
{
    const std::optional<QByteArray> content = readOrdinary(path, LargestText);
    if (content)
        return decode(*content);
    tellFailure(QStringLiteral("Невозможно прочитать файл:"), path);
    return std::nullopt;
}

/// The dialog asks about the name as it was typed, not about the one with the suffix.
bool mayTakeName(QWidget *parent, const QString &path, const QString &typed)
{
    if (path == typed || !QFileInfo::exists(path))
        return true;
    const QString question = QStringLiteral("Файл %1 уже существует. Заменить его?");
    return ask(parent, SaveTitle, question.arg(QFileInfo(path).fileName())) == QMessageBox::Yes;
}

bool writeText(const QString &path, const QString &text)
{
    if (replaceWholeFile(path, text.toUtf8()))
        return true;
    tellFailure(QStringLiteral("Ошибка записи файла "), path);
    return false;
}

bool wantsTemplate(QWidget *parent, const QString &title)
{
    return Options.editorUseShablonFiles &&
           ask(parent, title, QStringLiteral("Использовать хранилище шаблонов?")) == QMessageBox::Yes;
}
} // namespace

void FormMain::connectEditorFiles()
{
    const struct {
        QPushButton *button;
        void (FormMain::*act)();
    } rows[] = {
        {editorPage->load, &FormMain::editorLoadText},
        {editorPage->save, &FormMain::editorSaveText},
        {editorPage->attach, &FormMain::editorAttach},
        {editorPage->print, &FormMain::editorPrintText},
        {editorPage->toPerforator, &FormMain::editorToPrf},
        {editorPage->fromPerforator, &FormMain::editorFromPrf},
    };
    for (const auto &row : rows)
        connect(row.button, &QPushButton::clicked, this, row.act);
}

void FormMain::editorLoadText()
{
    if (wantsTemplate(this, QStringLiteral("Загрузка")))
        loadTemplate();
    else
        loadPlainText();
}

void FormMain::loadPlainText()
{
    const QString path =
        pickFileToOpenIn(this, QStringLiteral("Загрузка"), placeToBegin(Options.lastOpenFilePath), AllFiles);
    const std::optional<QString> text =
        path.isEmpty() ? std::nullopt : readText(path, CUtils::CorrectCodePageToUtf8);
    if (!text)
        return;
    setEditorText(*text);
    Options.lastOpenFilePath = QFileInfo(path).absolutePath();
}

void FormMain::loadTemplate()
{
    const QString path =
        pickFileToOpenIn(this, QStringLiteral("Загрузка из шаблона"), templateDirectory(), TemplateFilters);
    const std::optional<QString> text = path.isEmpty() ? std::nullopt : readText(path, templateText);
    if (!text)
        return;
    const TelegramFields fields = parseTemplate(*text, editorPage->shownRows());
    editorPage->setFields(fields);
    setEditorText(fields.text);
}

void FormMain::editorSaveText()
{
    if (wantsTemplate(this, SaveTitle))
        saveTemplate();
    else
        savePlainText();
}

void FormMain::savePlainText()
{
    const FilteredFile picked =
        pickNameToSave(this, QStringLiteral("Сохранение файла из редактора"),
                       placeToBegin(Options.lastSaveFilePath), TextFilter + QStringLiteral(";;") + AllFiles);
    QString path = picked.path;
    if (path.isEmpty())
        return;
    if (picked.filter == TextFilter && !path.endsWith(TextSuffix, Qt::CaseInsensitive))
        path += TextSuffix;
    if (!mayTakeName(this, path, picked.path) || !writeText(path, getEditorText()))
        return;
    Log.addCacheServiceString(QStringLiteral("Содержимое редактора сохранено в ") + shownName(path),
                              ProtocolInfo, true);
    Options.lastSaveFilePath = QFileInfo(path).absolutePath();
}

void FormMain::saveTemplate()
{
    makeTemplateDirectory();
    const FilteredFile picked =
        pickNameToSave(this, QStringLiteral("Сохранение шаблона"), templateDirectory(), TemplateFilters);
    QString path = picked.path;
    if (path.isEmpty())
        return;
    if (!QFileInfo(path).fileName().contains(QLatin1Char('.')))
        path += TextSuffix;
    TelegramFields fields = editorPage->fields();
    fields.text = getEditorText();
    if (mayTakeName(this, path, picked.path) &&
        writeText(path, composeTemplate(fields, editorPage->shownRows())))
        Log.addCacheServiceString(QStringLiteral("Содержимое редактора сохранено как шаблон в ") +
                                      shownName(path),
                                  ProtocolInfo, true);
}

void FormMain::editorPrintText()
{
    printTextDialog(getEditorTextForSend());
}

void FormMain::editorToPrf()
{
    CPerforatorOutDialog(this).Print(getEditorText());
}

void FormMain::editorFromPrf()
{
    CPerforatorInDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        setEditorText(dialog.getData());
}
