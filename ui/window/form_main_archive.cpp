// Chapter of FormMain: the tabs of past and present days' telegrams.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "text/attachments.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/dialogs/save_attachments.h"
#include "ui/dialogs/save_text.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/search_page.h"
#include "ui/widgets/telegram_view.h"
#include "ui/window/shown_telegram.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>

namespace
{
void reload(CTableViewModel_IO &model, const QString &dirPath, const CArchivePage &page)
{
    model.dirPath = dirPath;
    model.hideConnections = page.onlyTelegrams->isChecked();
    if (QDir(dirPath).exists())
        model.reloadFromDir();
    else
        model.clear();
}

/// Takes the new-mark off the selected row and returns its file, whose name may have been part of the mark.
QString takeSelected(CTableViewModel_IO &model, const CArchivePage &page)
{
    if (page.table->selectedRow() >= 0)
        model.clearNew(page.table->selectedRow());
    const int row = page.table->selectedRow(); // another one, if a former file of the same name has gone
    return row < 0 ? QString() : model.pathAt(row);
}

/// The text in which files may be enclosed: one of a megabyte is more than can be shown.
const QString &withEnclosed(const ShownText &telegram)
{
    return telegram.trouble.isEmpty() ? telegram.text : telegram.tooLong;
}
} // namespace

QWidget *FormMain::buildInputPage()
{
    inputPage = new CArchivePage(CArchivePage::Received, modelInput, Time.date);
    inputPage->text->setFont(Options.tlgFont);
    connect(inputPage->date, &QDateEdit::dateChanged, this, &FormMain::dateInputChanged);
    connect(inputPage->onlyTelegrams, &QCheckBox::toggled, this, &FormMain::checkBoxInputChanged);
    connect(inputPage->registers, &QCheckBox::toggled, this, &FormMain::inputCheckBoxRegistersChanged);
    connect(inputPage->table, &CArchiveTable::rowChosen, this, &FormMain::inputFileSelectChanged);
    connect(inputPage->toEditor, &QPushButton::clicked, this, &FormMain::inputToEditor);
    connect(inputPage->print, &QPushButton::clicked, this, &FormMain::inputPrintText);
    connect(inputPage->save, &QPushButton::clicked, this, &FormMain::inputSaveText);
    connect(inputPage->toPerforator, &QPushButton::clicked, this, &FormMain::inputToPerforator);
    connect(inputPage->saveAttach, &QPushButton::clicked, this, &FormMain::inputSaveAttach);
    connect(inputPage->forward, &QPushButton::clicked, this, &FormMain::inputForward);
    return inputPage;
}

QWidget *FormMain::buildOutputPage()
{
    outputPage = new CArchivePage(CArchivePage::Sent, modelOutput, Time.date);
    outputPage->text->setFont(Options.tlgFont);
    connect(outputPage->date, &QDateEdit::dateChanged, this, &FormMain::dateOutputChanged);
    connect(outputPage->onlyTelegrams, &QCheckBox::toggled, this, &FormMain::checkBoxOutputChanged);
    connect(outputPage->registers, &QCheckBox::toggled, this, &FormMain::outputCheckBoxRegistersChanged);
    connect(outputPage->table, &CArchiveTable::rowChosen, this, &FormMain::outputFileSelectChanged);
    connect(outputPage->toEditor, &QPushButton::clicked, this, &FormMain::outputToEditor);
    connect(outputPage->print, &QPushButton::clicked, this, &FormMain::outputPrintText);
    return outputPage;
}

void FormMain::reloadTableView_Input()
{
    reload(modelInput, State.pathInp_forDate(inputPage->date->date()), *inputPage);
}

void FormMain::reloadTableView_Output()
{
    reload(modelOutput, State.pathOut_forDate(outputPage->date->date()), *outputPage);
}

void FormMain::dateInputChanged()
{
    reloadTableView_Input();
}

void FormMain::dateOutputChanged()
{
    reloadTableView_Output();
}

void FormMain::checkBoxInputChanged()
{
    reloadTableView_Input();
}

void FormMain::checkBoxOutputChanged()
{
    reloadTableView_Output();
}

// What is shown stays until another telegram is chosen, also where the file goes: the operator may be
// reading.
void FormMain::inputFileSelectChanged()
{
    const QString path = takeSelected(modelInput, *inputPage);
    if (path.isEmpty())
        return;
    inputFileName = QFileInfo(path).fileName();
    openTelegram(path, inputShown, *inputPage);
    inputPage->saveAttach->setEnabled(hasAttachment(withEnclosed(inputShown)));
}

void FormMain::outputFileSelectChanged()
{
    const QString path = takeSelected(modelOutput, *outputPage);
    if (!path.isEmpty())
        openTelegram(path, outputShown, *outputPage);
}

void FormMain::update_PlainTextEdit_Input()
{
    showTelegram(inputShown, *inputPage);
}

void FormMain::update_PlainTextEdit_Output()
{
    showTelegram(outputShown, *outputPage);
}

void FormMain::inputCheckBoxRegistersChanged()
{
    update_PlainTextEdit_Input();
}

void FormMain::outputCheckBoxRegistersChanged()
{
    update_PlainTextEdit_Output();
}

void FormMain::inputToEditor()
{
    openInEditor(shownTelegram(inputShown, *inputPage));
}

void FormMain::outputToEditor()
{
    openInEditor(shownTelegram(outputShown, *outputPage));
}

void FormMain::inputPrintText()
{
    printTextDialog(shownTelegram(inputShown, *inputPage));
}

void FormMain::outputPrintText()
{
    printTextDialog(shownTelegram(outputShown, *outputPage));
}

void FormMain::inputToPerforator()
{
    CPerforatorOutDialog(this).Print(shownTelegram(inputShown, *inputPage));
}

void FormMain::outputToPerforator()
{
    CPerforatorOutDialog(this).Print(shownTelegram(outputShown, *outputPage));
}

void FormMain::inputSaveText()
{
    saveTextWithCodepage(this, shownTelegram(inputShown, *inputPage), inputFileName);
}

void FormMain::inputSaveAttach()
{
    saveAttachments(this, withEnclosed(inputShown));
}

void FormMain::printTextDialog(const QString &text)
{
    CPrintTxtDialog(text, this).exec();
}
