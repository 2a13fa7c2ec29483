// The link over an adapter on a serial port.

#include "link/tlg_thread.h"

#include "link/utils_ports.h"
#include "text/utils.h"

#include <QMutexLocker>

namespace
{
constexpr int LineAdapterClass = 1; // first digit of the serial numbers
constexpr int NoDevicePause = 60;   // seconds to the next attempt
constexpr int PauseBeforeSetup = 2; // seconds
} // namespace

bool CTlgThread::setTrelo(const QString &serial, int baud, bool arg)
{
    refreshOptions();
    bool found = false;
    {
        const QMutexLocker lock(&settingsMutex);
        adapterSN = serial;
        adapterArg = arg;
        portName = CUtils::getPortNameBySN(adapterSN, LineAdapterClass);
        found = !portName.isEmpty();
    }
    linkType = AdapterPort;
    reconnectDelay = PauseBeforeSetup;
    tlgBaud = baud == 50 || baud == 100 || baud == 200 ? baud : 0;
    if (!found)
        return false;
    needVersion = true;
    reportFailure = true;
    reconnectDelay = 0;
    restartRequested = true;
    paused = false;
    return true;
}

// The exchange with the adapter is not part of this program yet, so a port that is found serves no better
// than none.
void CTlgThread::PortThread()
{
    connected = false;
    QString prefix;
    {
        const QMutexLocker lock(&settingsMutex);
        portName = CUtils::getPortNameBySN(adapterSN, autoClass);
        const char *kind = isEthernetAdapter(adapterSN) ? "Nerva (%1)" : "Trelo (%1)";
        prefix = QString::fromLatin1(kind).arg(adapterSN);
    }
    if (reportFailure) {
        setState(prefix + QStringLiteral(": Подключение"));
        setState(prefix + QStringLiteral(":  Нет устройства"));
    }
    reconnectDelay = NoDevicePause;
    reportFailure = false;
}
