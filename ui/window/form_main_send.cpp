// Chapter of FormMain: the tab of what waits to go out, and the scan that fills it.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "procedures/queue_file.h"
#include "procedures/telegram_files.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/send_page.h"
#include "ui/pages/shown_text.h"
#include "ui/widgets/file_table.h"
#include "ui/widgets/telegram_view.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QPushButton>

namespace
{
bool isSpent(FormMain &form)
{
    const int row = form.sendPage->tableSend->selectedRow();
    return Options.processMode == SKK && row >= 0 && form.modelSend.at(row).trys == 0;
}

void enableActions(FormMain &form)
{
    const CSendPage &page = *form.sendPage;
    const QString path = form.sendSelectedPath();
    const bool mayReSend = !form.sendBadPath.isEmpty() || isSpent(form);
    page.toEditor->setEnabled(!form.sendShown.text.isEmpty());
    page.remove->setEnabled(!path.isEmpty());
    page.reSend->setEnabled(mayReSend);
    page.reSendAction->setEnabled(mayReSend);
    // Elsewhere a record's tries are not looked at: the file would go out all the same.
    page.pause->setEnabled(Options.processMode == SKK && !path.isEmpty());
    const bool mayChange = !path.isEmpty() && !recordsAreLocked();
    page.changeNumber->setEnabled(mayChange && !isUnderWay(path));
    page.resetTime->setEnabled(mayChange);
}

/// \a chosen, empty for none, is what one of the lists has selected by now; \a path is what it had before.
/// With nothing selected the text of the last file stays on view.
void takeSelection(FormMain &form, QString &path, const QString &chosen)
{
    const bool isAnother = !chosen.isEmpty() && chosen != path;
    path = chosen;
    if (isAnother) {
        form.sendShown = readShownText(chosen);
        form.sendPage->text->clear(); // the next one begins at its top
        form.update_PlainTextEdit_Send();
    }
    enableActions(form);
}

bool select(CTableViewModel_Send &model, CFileTable *table, QString &path, const QString &wanted)
{
    for (int row = 0; row < model.rowCount(); ++row) {
        if (queuePath(model.at(row).fileName) != wanted)
            continue;
        path = wanted; // its text is on view already
        table->selectRow(row);
        return true;
    }
    return false;
}

/// A file that has changed lists, or got its former name, stays selected.
void follow(FormMain &form, const QString &path)
{
    if (path.isEmpty() || form.sendPage->tableSend->selectedRow() >= 0 ||
        form.sendPage->tableSendBad->selectedRow() >= 0)
        return;
    form.sendPath.clear();
    form.sendBadPath.clear();
    if (!select(form.modelSend, form.sendPage->tableSend, form.sendPath, path))
        (void)select(form.modelSendBad, form.sendPage->tableSendBad, form.sendBadPath, path);
}

void scanQueue(FormMain &form)
{
    const QString path = form.sendSelectedPath();
    State.scanFoundCount = applySendQueue(scanSendQueue(), form.modelSend, form.modelSendBad);
    form.sendPage->tableSendBad->setVisible(form.modelSendBad.rowCount() > 0);
    follow(form, path);
    enableActions(form);
}

QString textOnView(const FormMain &form)
{
    const QString &text = form.sendShown.text;
    return form.sendPage->registers->isChecked() ? text : CUtils::removeRegisters(text);
}
} // namespace

QWidget *FormMain::buildSendPage()
{
    sendPage = new CSendPage(modelSend, modelSendBad);
    sendPage->text->setFont(Options.tlgFont);
    const auto selected = &QItemSelectionModel::selectionChanged;
    connect(sendPage->tableSend->selectionModel(), selected, this, &FormMain::sendFileSelectChanged);
    connect(sendPage->tableSendBad->selectionModel(), selected, this, &FormMain::sendBadFileSelectChanged);
    connect(sendPage->registers, &QCheckBox::toggled, this, &FormMain::sendCheckBoxRegistersChanged);
    connect(sendPage->toEditor, &QPushButton::clicked, this, &FormMain::sendToEditor);
    connect(sendPage->remove, &QPushButton::clicked, this, &FormMain::sendDeleteFile);
    connect(sendPage->reSend, &QPushButton::clicked, this, &FormMain::sendReSendFile);
    connect(sendPage->reSendAction, &QAction::triggered, this, &FormMain::sendReSendFile);
    connect(sendPage->pause, &QAction::triggered, this, &FormMain::sendPauseFile);
    connect(sendPage->changeNumber, &QAction::triggered, this, &FormMain::slotSendChangeAbonentNumber);
    connect(sendPage->resetTime, &QAction::triggered, this, &FormMain::slotSendResetSendTime);
    connect(sendPage, &CSendPage::menuOpened, this, [this] {
        sendMenuOpen = true;
        enableActions(*this);
    });
    connect(sendPage, &CSendPage::menuClosed, this, [this] { sendMenuOpen = false; });
    connect(&State, &CState::tlgModeChanged, sendPage, [this] { enableActions(*this); });
    return sendPage;
}

void FormMain::scanDir()
{
    // Rows must not move under an open menu.
    if (!sendMenuOpen)
        scanQueue(*this);
    // Nothing is added to the days before.
    if (inputPage->date->date() == Time.date)
        reloadTableView_Input();
    if (outputPage->date->date() == Time.date)
        reloadTableView_Output();
}

QString FormMain::sendSelectedPath() const
{
    return sendBadPath.isEmpty() ? sendPath : sendBadPath;
}

void FormMain::sendFileSelectChanged()
{
    const int row = sendPage->tableSend->selectedRow();
    if (row >= 0)
        sendPage->tableSendBad->clearSelection();
    takeSelection(*this, sendPath, row < 0 ? QString() : queuePath(modelSend.at(row).fileName));
}

void FormMain::sendBadFileSelectChanged()
{
    const int row = sendPage->tableSendBad->selectedRow();
    if (row >= 0)
        sendPage->tableSend->clearSelection();
    takeSelection(*this, sendBadPath, row < 0 ? QString() : queuePath(modelSendBad.at(row).fileName));
}

void FormMain::update_PlainTextEdit_Send()
{
    if (sendShown.trouble.isEmpty())
        sendPage->text->showForm(textOnView(*this));
    else
        sendPage->text->showTrouble(sendShown.trouble);
}

void FormMain::sendCheckBoxRegistersChanged()
{
    update_PlainTextEdit_Send();
}

void FormMain::sendToEditor()
{
    if (!sendShown.text.isEmpty())
        openInEditor(textOnView(*this));
}
