#pragma once

#include "tools/linesim/serial/pseudo_terminal.h"

class EventLog;

/// The serial port of a simulated adapter, known by the adapter's serial number.
class DevicePort : public PseudoTerminal
{
    Q_OBJECT

public:
    /// \a path is the port's at all times; empty takes what the system gives.
    DevicePort(const QString &serial, const QString &path, EventLog &log);

    /// Makes the port, unless it is there, with the event "port: SERIAL=PATH"; false, with the event "error",
    /// if there is none to be had.
    [[nodiscard]] bool plugIn();

private:
    QString m_serial;
    QString m_path;
    EventLog &m_log;
};
