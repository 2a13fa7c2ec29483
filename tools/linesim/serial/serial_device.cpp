#include "tools/linesim/serial/serial_device.h"

#include "tools/linesim/console/command_table.h"

SerialDevice::SerialDevice(const QString &serial, const QString &path, EventLog &log)
    : Commanded(log), m_port(serial, path, log)
{
    connect(&m_port, &PseudoTerminal::opened, this, [this] {
        takeOpening();
        m_log.event(QStringLiteral("opened"));
    });
    connect(&m_port, &PseudoTerminal::closed, this, [this] {
        takeClosing();
        m_log.event(QStringLiteral("closed"));
    });
    connect(&m_port, &PseudoTerminal::received, this, &SerialDevice::takeBytes);
}

bool SerialDevice::runOwn(const QString &name, const QString &argument)
{
    static const Command<SerialDevice> commands[] = {
        {"plug", [](SerialDevice &device, const QString &) { (void)device.m_port.plugIn(); }},
        {"unplug", [](SerialDevice &device, const QString &) { device.unplug(); }},
    };
    return runFrom(commands, *this, name, argument);
}

void SerialDevice::unplug()
{
    m_port.unplug();
    takeClosing();
    m_log.event(QStringLiteral("unplugged"));
}
