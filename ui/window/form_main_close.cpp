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
    rememberSettings();
    closeOtherWindows();
    QApplication::setQuitOnLastWindowClosed(true);
    event->accept();
    trayIcon.hide();
}

void FormMain::rememberSettings()
{
    Options.geometryMainForm = geometry();
    Options.ShowRegisters = protocolWidget->showRegisters();
    Options.ShowInfo = protocolWidget->showInfo();
    if (Options.processMode == SKK) // elsewhere there is no switch for it, and its setting stays
        Options.ShowCmd = protocolWidget->showCmd();
    Options.editorFromString = editorPage->from->text();
    Options.editorPScriptString = editorPage->pScript->text();
    Options.editorFKassaString = editorPage->fKassa->text();
    Options.editorFFromString = editorPage->fFrom->text();
    // A figure is what the word counter has put there, not the operator's template.
    if (editorPage->wordsCount->text().contains(QLatin1Char('$')))
        Options.editorWordsCountShablon = editorPage->wordsCount->text();
}

void FormMain::closeOtherWindows()
{
    // A question box or menu that is open would keep its event loop, and with it the program, alive.
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window != this && window->isVisible())
            window->close();
}
