// Chapter of FormMain: the ways out.

#include "app/ask.h"
#include "app/options.h"
#include "app/state.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScopedValueRollback>

namespace
{
void rememberSettings(const FormMain &form)
{
    Options.geometryMainForm = form.geometry();
    Options.ShowRegisters = form.protocolWidget->showRegisters();
    Options.ShowInfo = form.protocolWidget->showInfo();
    if (Options.processMode == SKK) // elsewhere there is no switch for it, and its setting stays
        Options.ShowCmd = form.protocolWidget->showCmd();
    Options.editorFromString = form.editorPage->from->text();
    Options.editorPScriptString = form.editorPage->pScript->text();
    Options.editorFKassaString = form.editorPage->fKassa->text();
    Options.editorFFromString = form.editorPage->fFrom->text();
    // A figure is what the word counter has put there, not the operator's template.
    if (form.editorPage->wordsCount->text().contains(QLatin1Char('$')))
        Options.editorWordsCountShablon = form.editorPage->wordsCount->text();
}

void closeOtherWindows(const FormMain &form)
{
    // A question box or menu that is open would keep its event loop, and with it the program, alive.
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window != &form && window->isVisible())
            window->close();
}
} // namespace

void FormMain::closeApplication()
{
    // The tray's menu works while the question is open.
    if (closeQuestionOpen)
        return;
    const QScopedValueRollback<bool> guard(closeQuestionOpen, true);
    if (ask(this, QStringLiteral("Velda"), QStringLiteral("Завершить приложение?")) != QMessageBox::Yes)
        return;
    State.closeSoon();
}

void FormMain::closeEvent(QCloseEvent *event)
{
    if (!State.closeAllowed) {
        event->ignore();
        hide();
        return;
    }
    receiver.takeRest();
    rememberSettings(*this);
    m_draft.finish(editorDraft()); // what is in the editor comes back with the next start
    closeOtherWindows(*this);
    QApplication::setQuitOnLastWindowClosed(true);
    event->accept();
    trayIcon.hide();
}
