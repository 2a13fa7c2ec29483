// The link over an adapter on a serial port.

#include "link/tlg_thread.h"

#include "app/journal_words.h"
#include "link/port_loop.h"
#include "link/utils_ports.h"
#include "text/utils.h"

#include <QMutexLocker>
#include <QSerialPort>

namespace
{
constexpr int LineAdapterClass = 1; // first digit of the serial numbers
constexpr int NoDevicePause = 60;   // seconds to the next attempt, also after a port that does not open
constexpr int PauseBeforeSetup = 2; // seconds
} // namespace

bool CTlgThread::setTrelo(const QString &serial, int baud, bool arg)
{
    refreshOptions();
    const QMutexLocker lock(&settingsMutex);
    adapterSN = serial;
    adapterArg = arg;
    portName = CUtils::getPortNameBySN(adapterSN, LineAdapterClass);
    linkType = AdapterPort;
    reconnectDelay = PauseBeforeSetup;
    tlgBaud = baud == 50 || baud == 100 || baud == 200 ? baud : 0;
    if (portName.isEmpty())
        return false;
    needVersion = true;
    reportFailure = true;
    reconnectDelay = 0;
    restartRequested = true;
    paused = false;
    return true;
}

void CTlgThread::PortThread()
{
    beginLink();
    QString name;
    QString prefix;
    {
        const QMutexLocker lock(&settingsMutex);
        portName = CUtils::getPortNameBySN(adapterSN, autoClass);
        name = portName;
        prefix = (isEthernetAdapter(adapterSN) ? JournalWords::NervaRoad : JournalWords::TreloRoad) +
                 adapterSN + QStringLiteral(")");
    }
    if (reportFailure)
        setState(prefix + JournalWords::LinkComing);
    if (name.isEmpty())
        return portFailed(prefix + QStringLiteral(":  Нет устройства"));
    QSerialPort port;
    port.setPortName(name);
    port.setBaudRate(QSerialPort::Baud9600);
    txCredit = 0;
    if (!port.open(QIODevice::ReadWrite))
        return portFailed(prefix +
                          (port.error() == QSerialPort::PermissionError
                               ? QStringLiteral(": Доступ запрещен / Проверьте права доступа к ") + name
                               : QLatin1Char(':') + port.errorString()));
    CPortLoop(*this, port, prefix, name).run();
}

void CTlgThread::portFailed(const QString &text)
{
    if (reportFailure)
        setState(text);
    reconnectDelay = NoDevicePause;
    reportFailure = false;
}
