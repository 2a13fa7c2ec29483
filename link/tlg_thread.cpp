#include "link/tlg_thread.h"

#include "app/options.h"

#include <QMutexLocker>

CTlgThread::CTlgThread() = default;

CTlgThread::~CTlgThread()
{
    stopThread();
    wait();
}

bool CTlgThread::setTcp(const QString &address, int port, bool server)
{
    refreshOptions();
    const QMutexLocker lock(&settingsMutex);
    tcpAddress = address;
    tcpPort = port;
    linkType = server ? TcpServer : TcpClient;
    reportFailure = true;
    reconnectDelay = 0;
    restartRequested = true;
    paused = false;
    return true;
}

void CTlgThread::pauseThread()
{
    const QMutexLocker lock(&settingsMutex);
    paused = true;
    restartRequested = true;
}

void CTlgThread::restartThread()
{
    refreshOptions();
    const QMutexLocker lock(&settingsMutex);
    reportFailure = true;
    restartRequested = true;
    reconnectDelay = 0;
    paused = false;
}

void CTlgThread::stopThread()
{
    stopRequested = true;
}

void CTlgThread::slotOnSec()
{
    refreshOptions();
    secondTick = true;
}

void CTlgThread::refreshOptions()
{
    const QMutexLocker lock(&settingsMutex);
    timeOut = qMax(0, Options.TimeOut);
    key = Options.key;
    autoClass = Options.autodetectPortTrelo ? 1 : 0;
}

QPair<QString, int> CTlgThread::tcpPeer() const
{
    const QMutexLocker lock(&settingsMutex);
    return {tcpAddress, tcpPort};
}

int CTlgThread::silenceLimit() const
{
    const QMutexLocker lock(&settingsMutex);
    return timeOut;
}

QString CTlgThread::channelKey() const
{
    const QMutexLocker lock(&settingsMutex);
    return key;
}

void CTlgThread::run()
{
    stopRequested = false;
    reconnectDelay = 0;
    while (!stopRequested) {
        shownWindow = -1;
        sleepSecond();
        if (stopRequested)
            return;
        if (takeTurn())
            runLink();
    }
}

// One step as against the requests of the main thread: a pause comes before it, or it reaches the link that
// begins.
bool CTlgThread::takeTurn()
{
    const QMutexLocker lock(&settingsMutex);
    if (!paused && reconnectDelay > 0) {
        reconnectDelay = restartRequested ? 0 : reconnectDelay - 1;
        return false;
    }
    restartRequested = false;
    reconnectDelay = 0;
    return !paused;
}

void CTlgThread::sleepSecond() const
{
    constexpr unsigned long StepMs = 100;
    for (int step = 0; step < 10 && !stopRequested; ++step)
        msleep(StepMs);
}

void CTlgThread::runLink()
{
    switch (LinkType(linkType.load())) {
    case AdapterPort: return PortThread();
    case TcpClient: return TcpIPThread();
    case TcpServer: return TcpIPSrvThread();
    }
}

// Text that waits in the send buffer goes out on this link; what an adapter had in hand was out of reach when
// its link ended, and nobody will report it any more. The question for the version is a wish of the settings.
void CTlgThread::beginLink()
{
    connected = false;
    lineError = LineGood;
    allSent = true;
    pendingEcho.mSet(QString());
    statusPending = false;
    synCountdown = 0;
    peerWindow = 0;
}

void CTlgThread::setState(const QString &text)
{
    stateText.mSet(text);
    emit signalOnState();
}

void CTlgThread::reportEvents()
{
    if (receivedEvents.exchange(0) != 0)
        emit signalOnReceived();
    if (sentEvents.exchange(0) != 0)
        emit signalOnSended();
}

// The log comes first: who finds the buffer empty finds all of its text logged.
void CTlgThread::chunkSent(const QString &chunk)
{
    dataSendedToLine(chunk);
    {
        const QMutexLocker lock(&sendBuffer.mutex);
        sendBuffer.dropHeld();
    }
    if (!sentLog.mIsEmpty())
        sentEvents.add(1);
}
