// Chapter of FormMain: where the threads of line and perforator meet the main thread.

#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "ui/form_main.h"
#include "ui/label_clickable.h"
#include "ui/protocol_widget.h"

#include <QFrame>
#include <QMutexLocker>
#include <QTimer>

namespace
{
constexpr int CKS = 0, SKK = 1, Direct = 2; // any other value is no procedure
constexpr int ReceiptRequestAfterText = 2;  ///< ticks from a telegram's last character to the request
/// Characters taken at once. A line brings a few in a second; a flood must leave room for the tick.
constexpr int ReceiveBlock = 65536;

/// Length of the adapter command at the head of received text. The link's rule but for "@L" and "@V", which
/// are commands on the way out alone: their "@" is taken by itself.
int receivedCommandLength(const QString &text)
{
    if (text.startsWith(QLatin1String("@L")) || text.startsWith(QLatin1String("@V")))
        return 1;
    return CTlgThread::testCmdLength(text);
}

QString takeHead(QString &text, int n)
{
    const QString head = text.left(n);
    text.remove(0, n);
    return head;
}

void processReceived(const QString &text)
{
    if (Options.processMode == CKS) {
        ProcessCKS.processReceive(text);
    } else if (Options.processMode == SKK) {
        State.connectionText += text;
        ProcessSKK.processReceive(text);
    } else if (Options.processMode == Direct) {
        ProcessDirect.processReceive(text);
    }
}
} // namespace

void FormMain::TlgSend(QString text)
{
    if (!protocolWidget->isLastString())
        protocolWidget->reset();
    if (text.isEmpty())
        return;
    text.replace(QLatin1Char('\r'), QLatin1Char('<')).replace(QLatin1Char('\n'), QLatin1Char('>'));
    TlgThread.sendBuffer.mAppend(upperMTK2(text));
    protocolWidget->slotProtocolDataChanged();
}

void FormMain::setThreadsParams()
{
    if (Options.TcpMode)
        TlgThread.setTcp(Options.Host, Options.Port, Options.AsTspSrv);
    else
        TlgThread.setTrelo(Options.TRELO_SN, Options.tlgBaud, false);
    if (Options.usePrf)
        PrfThread.setSorel(Options.SOREL_SN, Options.prfBaudIndex, Options.autodetectPortSorel);
}

void FormMain::slotOnTlgReceived()
{
    State.secondsSinceRx = 0;
    State.idleSeconds = 0;
    lampReceived->setPalette(palettes[White]);
    if (!moreToReceive)
        receiveNextBlock();
}

void FormMain::receiveNextBlock()
{
    moreToReceive = false;
    bool more = true;
    bool taken = false;
    while (more && !taken) {
        {
            QMutexLocker lock(&TlgThread.recvBuffer.mutex);
            receivedBlock += TlgThread.recvBuffer.getDataAndClear(ReceiveBlock);
            more = !TlgThread.recvBuffer.text.isEmpty();
        }
        taken = takeReceivedPieces();
    }
    // What is not whole yet waits where the link thread adds to it.
    {
        QMutexLocker lock(&TlgThread.recvBuffer.mutex);
        TlgThread.recvBuffer.text.prepend(receivedBlock);
        receivedBlock.clear();
    }
    if (more) {
        moreToReceive = true;
        QTimer::singleShot(0, this, &FormMain::receiveNextBlock);
    }
}

bool FormMain::takeReceivedPieces()
{
    bool any = false;
    while (true) {
        // Both are tried in each round: text may follow the command at once.
        const bool command = takeReceivedCommand();
        const bool text = takeReceivedText();
        if (!command && !text)
            return any;
        any = true;
    }
}

bool FormMain::takeReceivedCommand()
{
    const int length = receivedCommandLength(receivedBlock);
    if (length == 0)
        return false;
    const QString command = takeHead(receivedBlock, length);
    Log.add(command, ProtocolReceived);
    if (Options.processMode == SKK)
        ProcessSKK.processReceiveCmd(command);
    return true;
}

bool FormMain::takeReceivedText()
{
    const int end = receivedBlock.indexOf(QLatin1Char('@'));
    const int length = end < 0 ? receivedBlock.size() : end;
    if (length == 0)
        return false;
    const QString text = takeHead(receivedBlock, length);
    Log.add(text, ProtocolReceived);
    processReceived(text);
    return true;
}

void FormMain::slotOnTlgSended()
{
    State.secondsSinceTx = 0;
    const QString text = TlgThread.sentLog.mTake();
    if (!text.isEmpty())
        Log.add(text, ProtocolSent);
    if (Options.processMode == SKK)
        State.connectionText += text;
    State.idleSeconds = 0;
    if (State.fileInProgress && TlgThread.sendBuffer.mIsEmpty()) {
        if (Options.processMode == CKS) {
            State.askReceiptCountdown = ReceiptRequestAfterText;
        } else if (Options.processMode == Direct) {
            ProcessDirect.fileSended();
            State.scanCountdown = 0;
        }
    }
    lampSent->setPalette(palettes[White]);
}

void FormMain::slotOnTlgState()
{
    const QString text = TlgThread.stateText.mGet();
    const bool up = TlgThread.linkUp();
    showState(labelLinkState, text);
    labelLinkState->setPalette(palettes[up ? Green : Red]);
    Log.addCacheServiceString(text, ProtocolInfo, false);
    modeFrame->setEnabled(up);
    if (Options.processMode == SKK && !up && State.connectionActive)
        ProcessSKK.clearSKKConnection();
}

void FormMain::slotOnPrfState()
{
    showState(labelPrfState, PrfThread.state());
    labelPrfState->setPalette(palettes[PrfThread.connected ? Green : PrfThread.adapterFound ? White : Red]);
}
