#include "tools/linesim/record/tapped_port.h"

#include "tools/linesim/console/event_log.h"

namespace
{
constexpr int ReturnMs = 1000;
} // namespace

TappedPort::TappedPort(const Settings &settings, EventLog &log)
    : m_log(log), m_port(settings.serial, settings.port, log)
{
    m_device.setPortName(settings.device);
    m_return.setSingleShot(true);
    m_return.setInterval(ReturnMs);
    connect(&m_return, &QTimer::timeout, this, [this] { (void)m_port.plugIn(); });
    connect(&m_port, &PseudoTerminal::opened, this, &TappedPort::open);
    connect(&m_port, &PseudoTerminal::closed, this, [this] { close(LineRecord::Workstation); });
    connect(&m_port, &PseudoTerminal::received, this, &TappedPort::takeFromWorkstation);
    connect(&m_device, &QSerialPort::readyRead, this, &TappedPort::takeFromDevice);
    connect(&m_device, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError)
            QMetaObject::invokeMethod(this, &TappedPort::cut,
                                      Qt::QueuedConnection); // not under the port's feet
    });
}

void TappedPort::open()
{
    if (!m_device.open(QIODevice::ReadWrite)) {
        m_log.event(QStringLiteral("error"),
                    m_device.portName() + QLatin1String(": ") + m_device.errorString());
        return cut();
    }
    m_device.clear(); // what came while nobody listened
    m_open = true;
    m_log.event(QStringLiteral("connected"), QString::number(++m_connection));
    emit opened(m_connection, LineRecord::Workstation);
}

void TappedPort::close(LineRecord::Side by)
{
    m_device.close();
    if (!std::exchange(m_open, false))
        return;
    m_log.event(QStringLiteral("closed"), QString::number(m_connection));
    emit closed(m_connection, by);
}

/// On first, recorded then: the record must not hold up the line.
void TappedPort::takeFromWorkstation(const QByteArray &said)
{
    const QByteArray bytes = m_open ? untilCut(said) : QByteArray();
    if (bytes.isEmpty())
        return;
    const int speed = m_port.speed();
    if (speed > 0 && speed != m_device.baudRate())
        m_device.setBaudRate(speed);
    m_device.write(bytes);
    m_device.flush();
    emit passed(m_connection, LineRecord::Workstation, bytes);
}

void TappedPort::takeFromDevice()
{
    const QByteArray bytes = untilCut(m_device.readAll());
    if (bytes.isEmpty())
        return;
    m_port.write(bytes);
    emit passed(m_connection, LineRecord::FarEnd, bytes);
}

void TappedPort::cut()
{
    m_port.unplug();
    close(LineRecord::FarEnd);
    m_return.start();
}
