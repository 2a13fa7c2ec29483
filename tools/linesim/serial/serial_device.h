#pragma once

#include "tools/linesim/console/commanded.h"
#include "tools/linesim/serial/device_port.h"

/// A device on a serial port of its own: what all of them do alike. The events: "port" as serial number and
/// path, "opened" and "closed" by the program, "unplugged". The commands: "plug", "unplug".
class SerialDevice : public Commanded
{
    Q_OBJECT

public:
    /// Plugs it in; false, with an event, if that fails.
    [[nodiscard]] virtual bool start() { return m_port.plugIn(); }
    [[nodiscard]] QString portName() const { return m_port.portName(); }

protected:
    SerialDevice(const QString &serial, const QString &path, EventLog &log);

    [[nodiscard]] bool runOwn(const QString &name, const QString &argument) override;
    virtual void takeOpening() = 0; ///< a program has opened the port
    virtual void takeClosing() {}   ///< it has closed it, or the port is gone
    virtual void takeBytes(const QByteArray &bytes) = 0;
    void unplug();

    DevicePort m_port;
};
