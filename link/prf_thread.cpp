#include "link/prf_thread.h"

#include "link/perforator_protocol.h"
#include "link/prf_loop.h"
#include "text/utils.h"

#include <QMutexLocker>
#include <QSerialPort>

#include <utility>

using namespace PerforatorProtocol;

namespace
{
constexpr int PerforatorClass = 2; // first digit of the serial numbers
constexpr int FailurePause = 60;   // seconds to the next attempt
constexpr int SleepMs = 100;       // a second's sleep ends this soon when something is wanted
} // namespace

CPrfThread::CPrfThread() = default;

CPrfThread::~CPrfThread()
{
    stopThread();
    wait();
}

// The former stop is forgotten here, not by the thread: it might forget one that is asked for meanwhile.
void CPrfThread::start(Priority priority)
{
    if (!isRunning())
        stopRequested = false;
    QThread::start(priority);
}

bool CPrfThread::setSorel(const QString &serial, int baud, bool autodetectPort)
{
    {
        const QMutexLocker lock(&settingsMutex);
        adapterSN = serial;
        baudIndex = baud;
        autodetect = autodetectPort;
        portName = CUtils::getPortNameBySN(serial);
        if (portName.isEmpty())
            return false;
    }
    Activate();
    return true;
}

void CPrfThread::pauseThread()
{
    const QMutexLocker lock(&settingsMutex);
    paused = true;
    restartRequested = true;
}

void CPrfThread::Deactivate()
{
    pauseThread();
}

void CPrfThread::restartThread()
{
    const QMutexLocker lock(&settingsMutex);
    restartRequested = true;
    reconnectDelay = 0;
    paused = false;
}

void CPrfThread::Activate()
{
    restartThread();
}

void CPrfThread::stopThread()
{
    stopRequested = true;
}

void CPrfThread::slotOnSec()
{
    secondTick = true;
}

void CPrfThread::Send(const QString &text)
{
    const QMutexLocker lock(&sendMutex);
    sendText += text;
}

void CPrfThread::clearSend()
{
    const QMutexLocker lock(&sendMutex);
    sendText.clear();
}

void CPrfThread::clearSent()
{
    const QMutexLocker lock(&sendMutex);
    sentText.clear();
}

int CPrfThread::waitingLength() const
{
    const QMutexLocker lock(&sendMutex);
    return sendText.size();
}

int CPrfThread::sentLength() const
{
    const QMutexLocker lock(&sendMutex);
    return sentText.size();
}

QString CPrfThread::getAndClearReceive()
{
    const QMutexLocker lock(&receiveMutex);
    return std::exchange(receivedText, QString());
}

void CPrfThread::startRead()
{
    addCommand(StartRead);
}

void CPrfThread::stopRead()
{
    addCommand(StopRead);
}

void CPrfThread::addCommand(char byte)
{
    const QMutexLocker lock(&commandMutex);
    commandBytes += byte;
}

QString CPrfThread::state() const
{
    const QMutexLocker lock(&settingsMutex);
    return stateText;
}

void CPrfThread::run()
{
    while (waitUntilWanted())
        if (takeTurn())
            connectAdapter();
}

// One step as against the requests of the main thread: a pause comes before it, or it reaches the connection
// that begins.
bool CPrfThread::takeTurn()
{
    const QMutexLocker lock(&settingsMutex);
    if (isIdle())
        return false;
    restartRequested = false;
    reconnectDelay = 0; // a restart cuts the wait
    return true;
}

// A restart is looked for beside the delay: a failure at the same moment may have set the delay behind it.
bool CPrfThread::isIdle() const
{
    return !stopRequested && (paused || (reconnectDelay > 0 && !restartRequested));
}

// Sleeps while no connection is due; false when the thread is to end. A pause keeps the waiting time.
bool CPrfThread::waitUntilWanted()
{
    connected = false;
    while (isIdle())
        if (sleepSecond() && !paused && reconnectDelay > 0)
            reconnectDelay.add(-1);
    return !stopRequested;
}

/// False if the second was cut short.
bool CPrfThread::sleepSecond() const
{
    for (int slept = 0; slept < 1000; slept += SleepMs) {
        if (!isIdle())
            return false;
        msleep(SleepMs);
    }
    return true;
}

void CPrfThread::connectAdapter()
{
    QString name;
    QString prefix;
    int speed = 0;
    {
        const QMutexLocker lock(&settingsMutex);
        portName = CUtils::getPortNameBySN(adapterSN, autodetect ? PerforatorClass : 0);
        name = portName;
        prefix = QStringLiteral("Sorel (%1)").arg(adapterSN);
        speed = baudIndex;
    }
    if (name.isEmpty())
        return failed(prefix + QStringLiteral(":  Нет устройства"));
    QSerialPort port;
    port.setPortName(name);
    port.setBaudRate(QSerialPort::Baud9600);
    if (!port.open(QIODevice::ReadWrite))
        return failed(prefix + QStringLiteral(": ") + port.errorString());
    connected = reportFailure = adapterFound = true;
    setState(prefix + QStringLiteral(": Соединено "));
    CPrfLoop(*this, port, speed).run();
    port.close();
    connected = false; // before the state is told, which is shown in the colour of this flag
    if (!stopRequested)
        setState(prefix + QStringLiteral(": Ожидание"));
}

void CPrfThread::failed(const QString &text)
{
    adapterFound = false;
    if (reportFailure)
        setState(text);
    reportFailure = false;
    reconnectDelay = FailurePause;
}

void CPrfThread::setState(const QString &text)
{
    {
        const QMutexLocker lock(&settingsMutex);
        stateText = text;
    }
    emit signalOnState();
}
