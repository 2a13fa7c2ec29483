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
#include "ui/pages/protocol_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/label_clickable.h"
#include "ui/window/status_strip.h"

#include <QElapsedTimer>
#include <QFrame>
#include <QMutexLocker>
#include <QScopedValueRollback>
#include <QTimer>

namespace
{
constexpr int ReceiptRequestAfterText = 2; ///< ticks from a telegram's last character to the request
constexpr int ReceiveBlock = 65536;        ///< characters fetched from the link thread at once
/// Characters of one piece of text on a dialled line, where one scan may store many telegrams.
constexpr int SwitchedPiece = 256;

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
    TlgThread.sendBuffer.mAppendOperators(upperMTK2(text));
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
    noteReception();
    if (!moreToReceive && !receiving)
        takeReceivedTurn();
}

void FormMain::noteReception()
{
    State.secondsSinceRx = 0;
    State.idleSeconds = 0;
    CStatusStrip::setColor(strip->lampReceived, CStatusStrip::White);
}

/// Takes what has come, as long as the time of a turn lasts; the tick comes in between.
void FormMain::takeReceivedTurn()
{
    const QScopedValueRollback<bool> guard(receiving, true);
    moreToReceive = false;
    QElapsedTimer turn;
    turn.start();
    do {
        if (takeReceivedPiece() == 0)
            return returnUncut();
    } while (turn.elapsed() < receiveMilliseconds);
    returnUncut();
    moreToReceive = true;
    QTimer::singleShot(0, this, &FormMain::takeNextTurn);
}

void FormMain::takeNextTurn()
{
    noteReception(); // what waited here had come before any silence
    takeReceivedTurn();
}

/// The window closes: what waits by now is taken, however long that lasts. A far end that never falls silent
/// must not hold the end up, so what comes from here on is left.
void FormMain::takeRestOfReceived()
{
    int waiting = receivedBlock.size();
    {
        QMutexLocker lock(&TlgThread.recvBuffer.mutex);
        waiting += TlgThread.recvBuffer.text.size();
    }
    while (waiting > 0) {
        const int taken = takeReceivedPiece();
        if (taken == 0)
            break;
        waiting -= taken;
    }
    returnUncut();
}

/// What is not whole yet, or has no time any more, waits where the link thread adds to it.
void FormMain::returnUncut()
{
    QMutexLocker lock(&TlgThread.recvBuffer.mutex);
    TlgThread.recvBuffer.text.prepend(receivedBlock);
    receivedBlock.clear();
}

bool FormMain::fetchReceived()
{
    QMutexLocker lock(&TlgThread.recvBuffer.mutex);
    const QString fetched = TlgThread.recvBuffer.getDataAndClear(ReceiveBlock);
    receivedBlock += fetched;
    return !fetched.isEmpty();
}

int FormMain::takeReceivedPiece()
{
    do {
        if (const int command = takeReceivedCommand())
            return command;
        if (const int text = takeReceivedText())
            return text;
    } while (fetchReceived());
    return 0;
}

int FormMain::takeReceivedCommand()
{
    const int length = CTlgThread::loopCmdLength(receivedBlock);
    if (length == 0)
        return 0;
    const QString command = takeHead(receivedBlock, length);
    Log.add(command, ProtocolReceived);
    if (Options.processMode == SKK)
        ProcessSKK.processReceiveCmd(command);
    return length;
}

int FormMain::takeReceivedText()
{
    const int end = receivedBlock.indexOf(QLatin1Char('@'));
    int length = end < 0 ? receivedBlock.size() : end;
    if (Options.processMode == SKK)
        length = qMin(length, SwitchedPiece);
    if (length == 0)
        return 0;
    const QString text = takeHead(receivedBlock, length);
    Log.add(text, ProtocolReceived);
    processReceived(text);
    return length;
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
    CStatusStrip::setColor(strip->lampSent, CStatusStrip::White);
}

void FormMain::slotOnTlgState()
{
    for (const QString &text : TlgThread.stateText.mTakeNews())
        Log.addCacheServiceString(text, ProtocolInfo, false);
    strip->showState(strip->labelLinkState, TlgThread.stateText.mGet());
    const bool up = TlgThread.linkUp();
    CStatusStrip::setColor(strip->labelLinkState, up ? CStatusStrip::Green : CStatusStrip::Red);
    protocolPage->modeFrame->setEnabled(up);
    if (Options.processMode == SKK && !up && State.connectionActive)
        ProcessSKK.clearSKKConnection();
}

void FormMain::slotOnPrfState()
{
    strip->showState(strip->labelPrfState, PrfThread.state());
    CStatusStrip::setColor(strip->labelPrfState, PrfThread.connected      ? CStatusStrip::Green
                                                 : PrfThread.adapterFound ? CStatusStrip::White
                                                                          : CStatusStrip::Red);
}
