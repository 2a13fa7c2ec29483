#include "tools/linesim/serial/device_port.h"

#include "tools/linesim/console/event_log.h"

DevicePort::DevicePort(const QString &serial, const QString &path, EventLog &log)
    : PseudoTerminal(path), m_serial(serial), m_path(path), m_log(log)
{
}

bool DevicePort::plugIn()
{
    if (isPlugged())
        return true;
    if (!plug()) {
        m_log.event(QStringLiteral("error"), QStringLiteral("no port ") + m_path);
        return false;
    }
    m_log.event(QStringLiteral("port"), m_serial + QLatin1Char('=') + portName());
    return true;
}
