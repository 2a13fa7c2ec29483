// Chapter of FormMain: sending what the editor holds.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/new_telegram.h"
#include "text/filters.h"
#include "text/sending_form.h"
#include "text/telegram_form.h"
#include "text/telegram_index.h"
#include "ui/dialogs/send_tlg_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/protocol_page.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTextCursor>

namespace
{
const QString DefaultCategory = QStringLiteral("П");

/// Spells out in the text of \a page what the line cannot carry as it stands; cursor and selection stay at
/// their letters.
void spellOut(CEditorPage &page)
{
    const QString before = page.text->toPlainText();
    const QTextCursor former = page.text->textCursor();
    const auto moved = [&before](int position) { return nonTlgCharReplace(before.left(position)).size(); };
    const int anchor = moved(former.anchor()), position = moved(former.position());
    page.replaceText(nonTlgCharReplace(before));
    QTextCursor cursor = page.text->textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    page.text->setTextCursor(cursor);
}

bool hasCategory(const CEditorPage &page)
{
    return page.shownRows()[CategoryRow];
}

/// Tells why the index will not do, and asks for another; true if there is nothing to tell.
bool indexIsAccepted(const CEditorPage &page)
{
    const QString fault =
        hasCategory(page) ? telegramIndexFault(page.category->currentText(), page.index->text()) : QString();
    page.indexFault->setText(fault);
    if (!fault.isEmpty())
        page.index->setFocus();
    return fault.isEmpty();
}

/// Lets \a dialog show the telegram, with what is known of its way.
void prepare(CSendTlgDialog &dialog, const SendingForm &form)
{
    dialog.setWindowTitle(form.title);
    dialog.setText(form.text);
    dialog.setNumber(form.number);
    dialog.setCKS(form.centreOffered, form.centreChosen);
}
} // namespace

// What has been sent can go to somebody else as soon as a field says so, before it is left.
void FormMain::connectEditorSending()
{
    connect(editorPage->send, &QPushButton::clicked, this, &FormMain::editorSendEditorText);
    const auto allow = [this] {
        if (!editorPage->text->document()->isEmpty() && !editorIsSent())
            editorPage->send->setEnabled(true);
    };
    for (const QLineEdit *line :
         {editorPage->index, editorPage->from, editorPage->marks, editorPage->address, editorPage->fKassa,
          editorPage->fTo, editorPage->fFrom, editorPage->pScript})
        connect(line, &QLineEdit::textChanged, this, allow);
    for (const QComboBox *choice : {editorPage->form, editorPage->category, editorPage->series})
        connect(choice, &QComboBox::currentTextChanged, this, allow);
}

QString FormMain::getEditorTextForSend()
{
    spellOut(*editorPage);
    noteEditorDropped(QString());
    TelegramFields fields = editorPage->fields();
    fields.text = getEditorText();
    return composeTelegram(fields, Options.editorInterfaceMode, editorPage->shownRows(),
                           {State.EditorN + 1, Time.dateTime});
}

void FormMain::editorSendEditorText()
{
    if (!indexIsAccepted(*editorPage))
        return;
    CSendTlgDialog dialog(this);
    const SendingForm form = sendingForm(getEditorTextForSend(), hasCategory(*editorPage));
    prepare(dialog, form);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (dialog.sendNow)
        return editorSendAtOnce(form.text);
    dialog.order.category = hasCategory(*editorPage) ? editorPage->category->currentText() : DefaultCategory;
    editorNoteQueued(queueTelegram(dialog.order, form.text));
}

void FormMain::editorSendAtOnce(const QString &text)
{
    const bool there = Options.processMode == SKK ? State.connectionActive : TlgThread.linkUp();
    if (!there) // gone while the dialog closed
        return;
    TlgSend(text);
    editorDraftDone();
    if (Options.processMode == Direct)
        tabWidget->setCurrentWidget(protocolPage);
}

// What could not be queued stays to be sent once more, to those who have not got it.
void FormMain::editorNoteQueued(const Queued &queued)
{
    if (queued.names.isEmpty())
        return;
    if (!queued.unsent.isEmpty())
        return noteEditorDropped(QStringLiteral("Не поставлено в очередь для номеров: ") +
                                 queued.unsent.join(QStringLiteral(", ")));
    m_editorSent = editorVersion();
    editorDraftDone();
    editorPage->send->setEnabled(false);
}

/// Changes with each change of the text, were it back to what it was, and with what the other fields hold;
/// not with the words and the time, which change by themselves.
QString FormMain::editorVersion() const
{
    TelegramFields fields = editorPage->fields();
    fields.text = QString::number(editorPage->text->document()->revision());
    return composeTemplate(fields, editorPage->shownRows());
}

bool FormMain::editorIsSent() const
{
    return editorVersion() == m_editorSent;
}
