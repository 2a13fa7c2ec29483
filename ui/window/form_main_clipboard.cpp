// Chapter of FormMain: the context menu of the roll, and its clipboard.

#include "app/ask.h"
#include "app/options.h"
#include "app/state.h"
#include "text/filters.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>

namespace
{
constexpr int AllText = 0, ReceivedText = 1, SentText = 2;
}

void FormMain::slotProtocolContextMenuEvent(const QPoint &point)
{
    QMenu menu;
    menu.setObjectName(QStringLiteral("protocolMenu"));
    menu.addAction(QStringLiteral("Копировать"), this, &FormMain::slotProtocolCopy);
    menu.addAction(QStringLiteral("Копировать прием"), this, &FormMain::slotProtocolCopyRcv);
    menu.addAction(QStringLiteral("Копировать передачу"), this, &FormMain::slotProtocolCopySnd);
    if (Options.usePrf && protocolWidget->hasSelection()) {
        menu.addAction(QStringLiteral("Прием на перфоратор"), this, &FormMain::slotProtocolRcvToPerforator);
        menu.addAction(QStringLiteral("Передачу на перфоратор"), this,
                       &FormMain::slotProtocolSndToPerforator);
    }
    if (State.manualMode && !QApplication::clipboard()->text().isEmpty())
        menu.addAction(QStringLiteral("Буфер обмена выдать на передачу"), this,
                       &FormMain::slotProtocolSendClipboard);
    menu.exec(protocolWidget->mapToGlobal(point));
}

void FormMain::slotProtocolCopy()
{
    protocolWidget->copyToClipboard(AllText);
}

void FormMain::slotProtocolCopyRcv()
{
    protocolWidget->copyToClipboard(ReceivedText);
}

void FormMain::slotProtocolCopySnd()
{
    protocolWidget->copyToClipboard(SentText);
}

void FormMain::slotProtocolRcvToPerforator()
{
    CPerforatorOutDialog(this).Print(protocolWidget->getSelect(ReceivedText));
}

void FormMain::slotProtocolSndToPerforator()
{
    CPerforatorOutDialog(this).Print(protocolWidget->getSelect(SentText));
}

// A ">" tells that the text was copied from the roll: its line ends are in the line's form already.
void FormMain::slotProtocolSendClipboard()
{
    QString text = QApplication::clipboard()->text();
    const QLatin1Char lineFeed('\n'), carriageReturn('\r');
    if (text.contains(QLatin1Char('>')) || !text.contains(lineFeed))
        return TlgSend(QStringClearNonMTK2SkipCRNL(text));
    if (!text.contains(carriageReturn)) {
        const int answer =
            askWithCancel(this, QStringLiteral("Velda"),
                          QStringLiteral("Выполнить преобразования (ПС -> ВК+ПС) во вставляемом тексте?"));
        if (answer != QMessageBox::Yes && answer != QMessageBox::No)
            return;
        if (answer == QMessageBox::Yes)
            text.replace(lineFeed, QStringLiteral("\r\n"));
    }
    TlgSend(QStringClearNonMTK2(text));
}
