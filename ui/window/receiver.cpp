#include "ui/window/receiver.h"

#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"

#include <QElapsedTimer>
#include <QMutexLocker>
#include <QScopedValueRollback>
#include <QTimer>

namespace
{
constexpr int ReceiveBlock = 65536; ///< characters fetched from the link thread at once
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

void CReceiver::takeNews()
{
    if (!moreToReceive && !m_receiving)
        takeTurn();
}

/// Takes what has come, as long as the time of a turn lasts; the tick comes in between.
void CReceiver::takeTurn()
{
    const QScopedValueRollback<bool> guard(m_receiving, true);
    moreToReceive = false;
    QElapsedTimer turn;
    turn.start();
    do {
        if (takePiece() == 0)
            return returnUncut();
    } while (turn.elapsed() < receiveMilliseconds);
    returnUncut();
    moreToReceive = true;
    QTimer::singleShot(0, this, &CReceiver::takeNextTurn);
}

void CReceiver::takeNextTurn()
{
    emit resumed();
    takeTurn();
}

void CReceiver::takeRest()
{
    int waiting = m_block.size();
    {
        QMutexLocker lock(&TlgThread.recvBuffer.mutex);
        waiting += TlgThread.recvBuffer.text.size();
    }
    while (waiting > 0) {
        const int taken = takePiece();
        if (taken == 0)
            break;
        waiting -= taken;
    }
    returnUncut();
}

/// What is not whole yet, or has no time any more, waits where the link thread adds to it.
void CReceiver::returnUncut()
{
    QMutexLocker lock(&TlgThread.recvBuffer.mutex);
    TlgThread.recvBuffer.text.prepend(m_block);
    m_block.clear();
}

bool CReceiver::fetch()
{
    QMutexLocker lock(&TlgThread.recvBuffer.mutex);
    const QString fetched = TlgThread.recvBuffer.getDataAndClear(ReceiveBlock);
    m_block += fetched;
    return !fetched.isEmpty();
}

int CReceiver::takePiece()
{
    do {
        if (const int command = takeCommand())
            return command;
        if (const int text = takeText())
            return text;
    } while (fetch());
    return 0;
}

int CReceiver::takeCommand()
{
    const int length = CTlgThread::loopCmdLength(m_block);
    if (length == 0)
        return 0;
    const QString command = takeHead(m_block, length);
    Log.add(command, ProtocolReceived);
    if (Options.processMode == SKK)
        ProcessSKK.processReceiveCmd(command);
    return length;
}

int CReceiver::takeText()
{
    const int end = m_block.indexOf(QLatin1Char('@'));
    int length = end < 0 ? m_block.size() : end;
    if (Options.processMode == SKK)
        length = qMin(length, SwitchedPiece);
    if (length == 0)
        return 0;
    const QString text = takeHead(m_block, length);
    Log.add(text, ProtocolReceived);
    processReceived(text);
    return length;
}
