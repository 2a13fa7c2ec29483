#include "link/utils_ports.h"

#include "text/utils.h"

#include <QMutexLocker>
#include <QSerialPortInfo>
#include <QStringList>

namespace
{
constexpr int SerialLength = 8;
constexpr auto PortsVariable = "VELDA_PORTS";
} // namespace

QString shortSerial(const QString &serial)
{
    return serial.left(SerialLength);
}

bool isEthernetAdapter(const QString &serial)
{
    return serial.size() == SerialLength && serial.startsWith(QLatin1Char('3'));
}

QList<SerialPort> serialPortsFromList(const QString &list)
{
    QList<SerialPort> ports;
    for (const QString &entry : list.split(QLatin1Char(';'))) {
        const QString serial = entry.section(QLatin1Char('='), 0, 0).trimmed();
        const QString name = entry.section(QLatin1Char('='), 1).trimmed();
        if (!serial.isEmpty() && !name.isEmpty())
            ports.append({serial, name});
    }
    return ports;
}

QList<SerialPort> serialPorts()
{
    static QMutex oneAtATime; // the system's list has state of its own, and three threads ask for it
    const QMutexLocker lock(&oneAtATime);
    QList<SerialPort> ports;
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts())
        ports.append({info.serialNumber(), info.portName()});
    return ports + serialPortsFromList(qEnvironmentVariable(PortsVariable));
}

QString CUtils::getPortNameBySN(QString serial)
{
    return getPortNameBySN(serial, 0);
}

QString CUtils::getPortNameBySN(QString &serial, int autoClass)
{
    const QList<SerialPort> ports = serialPorts();
    for (const SerialPort &port : ports)
        if (serial.size() == SerialLength && shortSerial(port.serial) == serial)
            return port.name;
    if (autoClass == 0)
        return QString();
    for (const SerialPort &port : ports) {
        const QString found = shortSerial(port.serial);
        if (found.size() != SerialLength || !found.startsWith(QString::number(autoClass)))
            continue;
        serial = found;
        return port.name;
    }
    return QString();
}
