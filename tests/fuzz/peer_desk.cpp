#include "tests/fuzz/peer_desk.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/stream_crypt.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "tests/fuzz/fuzz.h"
#include "text/mtk2.h"

#include <limits>

namespace
{
constexpr int QuietBeforeSending = 3, ReceiptPeriod = 30, RequestPeriod = 60; // the window's seconds

bool everythingSent()
{
    return TlgThread.sendBuffer.mIsEmpty() && TlgThread.allSent;
}
} // namespace

PeerDesk::PeerDesk(int procedure)
{
    Options.processMode = procedure;
    Options.TcpMode = true;
    Options.AO = QStringLiteral("777777 ДЕСК");
    Options.SKKTiming[SubscriberTiming] = {20, 20, 2, 3, 7, 0, 3, 3, 3, 30};
    Options.SKKTiming[CentreTiming] = {20, 20, 2, 3, 8, 0, 3, 4, 3, 40};
    Options.protocolFileNoClose = true; // the book is another target's affair
    TlgThread.refreshOptions();
    State.manualMode = false;
    m_receiver.receiveMilliseconds = std::numeric_limits<int>::max();
}

void PeerDesk::connect()
{
    hangUp();
    TlgThread.allSent = true;
    TlgThread.connected = true;
    m_stream = std::make_unique<CTcpStream>(TlgThread);
}

void PeerDesk::hangUp()
{
    m_stream.reset();
    TlgThread.connected = false;
    if (Options.processMode == SKK && State.connectionActive)
        ProcessSKK.clearSKKConnection();
    checkState();
}

void PeerDesk::agreeKey()
{
    if (!m_stream || Options.processMode != CKS)
        return;
    const QByteArray key = QByteArray::fromHex("0123456789ABCDEF");
    StreamCrypt.setKey(8, reinterpret_cast<const unsigned char *>(key.constData()));
    StreamCrypt.init_crypt(0x35);
    StreamCrypt.init_decrypt(0x7A);
    m_stream->ciphered = true;
}

void PeerDesk::hear(const QByteArray &bytes, bool singly)
{
    if (!m_stream || bytes.isEmpty())
        return;
    m_heard += bytes.size();
    for (int at = 0; at < bytes.size() && m_stream; at += singly ? 1 : bytes.size()) {
        const int held = m_stream->heldCommand.size();
        const QByteArray read = singly ? bytes.mid(at, 1) : bytes;
        Fuzz::check(m_stream->take(read).size() <= held + read.size(), "no more answers than bytes");
        takeNews();
        send();
        checkState();
    }
}

void PeerDesk::takeNews()
{
    TlgThread.receivedEvents = 0;
    if (TlgThread.recvBuffer.mIsEmpty())
        return;
    State.secondsSinceRx = 0;
    State.idleSeconds = 0;
    m_receiver.takeNews();
    Fuzz::check(!m_receiver.moreToReceive, "all that is whole is taken");
    const QString left = TlgThread.recvBuffer.mGet();
    Fuzz::check(left.isEmpty() || left.startsWith(u'@'), "only a command waits");
    Fuzz::check(left.size() <= CTlgThread::LongestCommand, "a command ends");
}

void PeerDesk::send()
{
    for (LineChunk chunk = m_stream->nextChunk(); !chunk.text.isEmpty(); chunk = m_stream->nextChunk()) {
        (void)m_stream->encoded(chunk);
        m_wire += chunk.text;
        TlgThread.chunkSent(chunk.text);
    }
    takeSent();
}

void PeerDesk::takeSent()
{
    if (TlgThread.sentEvents.exchange(0) == 0)
        return;
    const QString text = TlgThread.sentLog.mTake();
    State.secondsSinceTx = 0;
    State.idleSeconds = 0;
    if (!text.isEmpty())
        Log.add(text, ProtocolSent);
    if (Options.processMode == SKK)
        State.connectionText += text;
    if (!State.fileInProgress || !TlgThread.sendBuffer.mIsEmpty())
        return;
    if (Options.processMode == CKS) {
        State.askReceiptCountdown = CProcessCKS::RequestSoon;
    } else if (Options.processMode == Direct) {
        ProcessDirect.fileSended();
        State.scanCountdown = CState::ScanOnNextTick;
    }
}

void PeerDesk::queue(bool toCentre)
{
    constexpr int Most = 5;
    const int number = m_queued.size() + 1;
    if (number > Most)
        return;
    QString name = QStringLiteral("20260731u00%1").arg(number);
    if (Options.processMode == Direct)
        name += QStringLiteral(".260731_11000%1").arg(number);
    const QByteArray content = QStringLiteral("ТЕЛЕГРАММА %1 ДЛЯ ДАЛЬНЕГО КОНЦА=").arg(number).toUtf8();
    m_queued[name] = content;
    m_desk.write(QStringLiteral("out/") + name, content);
    if (Options.processMode == SKK)
        m_desk.write(QStringLiteral("out/") + name + QStringLiteral(".dat"),
                     toCentre ? "123456|C|31.07.2026 11:00|u|3|N|" : "123456|S|31.07.2026 11:00|u|3|N|");
    State.scanCountdown = CState::ScanOnNextTick;
}

void PeerDesk::setAutomatic(bool on)
{
    State.setAutomatic(on);
    checkState();
}

void PeerDesk::hangUpByHand()
{
    if (Options.processMode != SKK)
        return;
    m_hungUp = State.currentFile;
    ProcessSKK.immediateHangUp();
    checkState();
}

void PeerDesk::tick(int seconds)
{
    for (; seconds > 0; --seconds) {
        beginTick();
        linkSecond();
        if (Options.processMode == CKS)
            ProcessCKS.timeCheck1sec();
        else if (Options.processMode == SKK)
            ProcessSKK.timeCheck1sec();
        scanIfDue();
        countIdle();
        ++State.tlgModeSeconds;
        dispatch();
        if (m_stream)
            send();
        checkState();
    }
}

void PeerDesk::beginTick()
{
    Time.setTo(Time.dateTime.addSecs(1));
    ++State.secondsSinceTx;
    ++State.secondsSinceRx;
}

void PeerDesk::linkSecond()
{
    if (m_stream && TlgThread.synCountdown > 0 && --TlgThread.synCountdown == 0)
        hangUp();
}

void PeerDesk::scanIfDue()
{
    if (--State.scanCountdown >= 0)
        return;
    State.scanCountdown = Options.scanDirsTimeout;
    if (!m_queued.isEmpty()) // nobody else puts anything there
        m_rows = scanSendQueue().good;
}

void PeerDesk::countIdle()
{
    if (Options.processMode != SKK ||
        ++State.idleSeconds != Options.SKKTiming[SubscriberTiming].Idle_Time_Before_HangUp)
        return;
    State.idleSeconds = 0;
    if (State.callDirection == NoDirection)
        return;
    TlgThread.sendBuffer.mAppendOperators(QStringLiteral("@H"));
    ProcessSKK.clearSKKConnection();
}

void PeerDesk::dispatch()
{
    if (!TlgThread.linkUp()) {
        State.hangUpPause = 0;
        return;
    }
    if (State.manualMode) {
        if (Options.processMode == SKK)
            ProcessSKK.clearAutoMode();
        return;
    }
    if (State.hangUpPause > 0) {
        --State.hangUpPause;
        return;
    }
    if (Options.processMode == CKS)
        dispatchCentre();
    else if (Options.processMode == SKK)
        dispatchSwitched();
    else
        dispatchDirect();
}

void PeerDesk::dispatchCentre()
{
    if (State.tlgMode == ModeAsked && State.tlgModeSeconds % ReceiptPeriod == 0)
        State.sendReceiptCountdown = CProcessCKS::OnNextTick;
    if (State.tlgMode == ModeUnknown && State.tlgModeSeconds % RequestPeriod == 0)
        State.askReceiptCountdown = CProcessCKS::OnNextTick;
    if (State.tlgMode == ModeOpen && State.secondsSinceRx > QuietBeforeSending)
        offer();
}

void PeerDesk::dispatchSwitched()
{
    if (State.AutoModeWaitTimer != 0 && everythingSent()) {
        ProcessSKK.processAutoMode();
        if (State.manualMode || State.hangUpPause > 0)
            return;
    }
    if (!State.connectionActive && State.AutoModeState == AutoIdle && State.callDirection == NoDirection)
        offer();
}

void PeerDesk::dispatchDirect()
{
    if (everythingSent())
        offer();
}

/// The first of the queue is offered to the procedure, where none is on its way.
void PeerDesk::offer()
{
    if (State.fileInProgress || m_rows.isEmpty())
        return;
    CTableViewModelItem_Send row = m_rows.first();
    if (Options.processMode == CKS)
        ProcessCKS.checkForSendNewTlg(row);
    else if (Options.processMode == SKK)
        ProcessSKK.checkForSendNewTlg(row);
    else
        ProcessDirect.checkForSendNewTlg(row);
}
