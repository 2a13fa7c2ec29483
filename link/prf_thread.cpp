#include "link/prf_thread.h"

#include "text/utils.h"

#include <QMutexLocker>

namespace
{
constexpr int PerforatorClass = 2; // first digit of the serial numbers
constexpr int NoDevicePause = 60;  // seconds to the next attempt
} // namespace

CPrfThread::CPrfThread() = default;

CPrfThread::~CPrfThread()
{
    stopThread();
    wait();
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
    paused = true;
    restartRequested = true;
}

void CPrfThread::Deactivate()
{
    pauseThread();
}

void CPrfThread::restartThread()
{
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

QString CPrfThread::state() const
{
    const QMutexLocker lock(&settingsMutex);
    return stateText;
}

void CPrfThread::setState(const QString &text)
{
    {
        const QMutexLocker lock(&settingsMutex);
        stateText = text;
    }
    emit signalOnState();
}

void CPrfThread::run()
{
    stopRequested = false; // the options dialog may have stopped it before
    while (waitUntilWanted()) {
        restartRequested = false;
        connectAdapter();
    }
}

// Sleeps while no connection is due; false when the thread is to end. A pause keeps the waiting time.
bool CPrfThread::waitUntilWanted()
{
    connected = false;
    while (!stopRequested && (paused || reconnectDelay > 0)) {
        sleep(1);
        if (!paused && reconnectDelay > 0)
            reconnectDelay.add(-1);
    }
    return !stopRequested;
}

// The exchange with the adapter is not part of this program yet, so a port that is found serves no better
// than none.
void CPrfThread::connectAdapter()
{
    QString prefix;
    {
        const QMutexLocker lock(&settingsMutex);
        portName = CUtils::getPortNameBySN(adapterSN, autodetect ? PerforatorClass : 0);
        adapterFound = !portName.isEmpty();
        prefix = QStringLiteral("Sorel (%1)").arg(adapterSN);
    }
    if (reportFailure)
        setState(prefix + QStringLiteral(":  Нет устройства"));
    reconnectDelay = NoDevicePause;
    reportFailure = false;
}
