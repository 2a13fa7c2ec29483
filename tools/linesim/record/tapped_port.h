#pragma once

#include "tools/linesim/record/tapped_line.h"
#include "tools/linesim/serial/device_port.h"

#include <QSerialPort>
#include <QTimer>

/// A tap between the workstation and the adapter on a serial port. The workstation opens a port that the tap
/// makes, and each time it does the tap opens the adapter's, at the same speed, 8 bits, no parity, one stop
/// bit. The lines of the modem are neither seen nor carried: a firmware update does not pass through a tap.
/// While the adapter's port cannot be opened the tap's goes and comes, as that of an adapter pulled out.
class TappedPort : public TappedLine
{
    Q_OBJECT

public:
    struct Settings {
        QString serial = QStringLiteral("10000001"); ///< printed for VELDA_PORTS
        QString port;                                ///< path of the tap's; empty takes what the system gives
        QString device;                              ///< the adapter's port: its name or its path
    };

    TappedPort(const Settings &settings, EventLog &log);

    [[nodiscard]] bool start() override { return m_port.plugIn(); }
    void cut() override; ///< pulls the adapter out, and puts it in again a second later

private:
    void open();
    void close(LineRecord::Side by);
    void takeFromWorkstation(const QByteArray &said);
    void takeFromDevice();

    EventLog &m_log;
    DevicePort m_port;
    QSerialPort m_device;
    QTimer m_return;
    int m_connection = 0;
    bool m_open = false;
};
