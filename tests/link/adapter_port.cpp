#include "tests/link/adapter_port.h"
#include "tests/support/patience.h"

#include "app/options.h"

#include <QtTest>

namespace
{
constexpr auto PortsVariable = "VELDA_PORTS";
} // namespace

AdapterPort::AdapterPort(const char *serial)
    : m_entry(QString::fromLatin1(serial) + QLatin1Char('=') + name() + QLatin1Char(';'))
{
    QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                     [this](const QByteArray &bytes) { m_got += bytes; });
    plug();
}

AdapterPort::~AdapterPort()
{
    unplug();
}

void AdapterPort::plug()
{
    if (!terminal.plug())
        qFatal("no pseudo-terminal to be had");
    qputenv(PortsVariable, (qEnvironmentVariable(PortsVariable) + m_entry).toLocal8Bit());
}

void AdapterPort::unplug()
{
    QString list = qEnvironmentVariable(PortsVariable);
    qputenv(PortsVariable, list.remove(m_entry).toLocal8Bit());
    terminal.unplug();
}

void AdapterPort::send(const QByteArray &hex)
{
    if (!comesTrue([this] { return isOpen(); }))
        qWarning("the program has not opened the port");
    terminal.write(QByteArray::fromHex(hex));
}

QByteArray AdapterPort::take()
{
    const QByteArray hex = m_got.toHex();
    m_got.clear();
    return hex;
}

AdapterLink::AdapterLink(int processMode, int baud, const char *serial)
    : adapter(serial), prefix(serial[0] == '3' ? QStringLiteral("Nerva (") : QStringLiteral("Trelo ("))
{
    CPortLoop::waits.firstByteMs = PatienceMs;
    CPortLoop::waits.settleMs = 100;
    CPortLoop::waits.versionStepMs = PortWaits().versionStepMs;
    prefix += QString::fromLatin1(serial) + QLatin1Char(')');
    Options.processMode = processMode;
    if (!thread.setTrelo(QString::fromLatin1(serial), baud, false))
        qWarning("the port is not found");
}

void AdapterLink::begin(bool needVersion)
{
    if (!comesTrue([this] { return !adapter.isOpen(); })) // by the connection before
        qWarning("the program has not closed the port");
    thread.needVersion = needVersion;
    line.once(&CTlgThread::PortThread);
}

bool AdapterLink::open(const char *version)
{
    const int before = line.states().size() + (thread.reportFailure ? 1 : 0);
    begin(version != nullptr);
    adapter.send("30");
    if (version) {
        if (!comesTrue([this] { return adapter.got().endsWith("5b"); }))
            return false;
        adapter.send(version);
    }
    const int shown = version ? 3 : 2; // connected, its version, and the last one signalled anew
    if (!shows(before + shown))
        return false;
    adapter.take();
    return true;
}

bool AdapterLink::shows(int count) const
{
    return comesTrue([&] { return line.states().size() >= count; });
}

QStringList AdapterLink::states() const
{
    QStringList states = line.states();
    for (QString &state : states)
        if (state.startsWith(prefix))
            state.remove(0, prefix.size());
    return states;
}

bool AdapterLink::ended() const
{
    return comesTrue([this] { return line.ended(); });
}
