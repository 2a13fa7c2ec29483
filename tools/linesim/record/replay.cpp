#include "tools/linesim/record/replay.h"

#include "tools/linesim/console/run_until_quit.h"

namespace
{
constexpr int TickMs = 5;
constexpr int ReturnMs = 1000; // an adapter pulled out comes again
} // namespace

Replay::Replay(const ReplayOptions &options, EventLog &log)
    : Commanded(log), m_player(options.record, options.player), m_listens(options.tcp.listens)
{
    if (options.onPort)
        usePort(options);
    else
        useTcp(options);
    connect(&m_player, &RecordPlayer::ended, this, &Replay::tell, Qt::QueuedConnection);
    connect(&m_timer, &QTimer::timeout, this, [this] { m_player.tick(m_clock.nsecsElapsed() / 1000); });
}

void Replay::useTcp(const ReplayOptions &options)
{
    m_tcp = std::make_unique<TcpEnd>(options.tcp, m_log);
    connect(m_tcp.get(), &TcpEnd::connected, &m_player, &RecordPlayer::opened);
    connect(m_tcp.get(), &TcpEnd::disconnected, &m_player, &RecordPlayer::closed);
    connect(m_tcp.get(), &TcpEnd::received, &m_player, &RecordPlayer::take);
    connect(&m_player, &RecordPlayer::write, m_tcp.get(), &TcpEnd::write);
    connect(&m_player, &RecordPlayer::close, m_tcp.get(), &TcpEnd::close);
    connect(&m_player, &RecordPlayer::open, m_tcp.get(), [this] {
        if (!m_listens)
            (void)m_tcp->start();
    });
}

void Replay::usePort(const ReplayOptions &options)
{
    m_port = std::make_unique<DevicePort>(options.serial, options.port, m_log);
    connect(m_port.get(), &PseudoTerminal::opened, this, [this] {
        m_log.event(QStringLiteral("connected"));
        m_player.opened();
    });
    connect(m_port.get(), &PseudoTerminal::closed, this, [this] {
        m_log.event(QStringLiteral("closed"));
        m_player.closed();
    });
    connect(m_port.get(), &PseudoTerminal::received, &m_player, &RecordPlayer::take);
    connect(&m_player, &RecordPlayer::write, m_port.get(), &PseudoTerminal::write);
    connect(&m_player, &RecordPlayer::close, this, &Replay::pullOut, Qt::QueuedConnection);
}

bool Replay::start()
{
    m_clock.start();
    m_timer.start(TickMs);
    if (m_port)
        return m_port->plugIn();
    return !m_listens || m_tcp->start();
}

void Replay::pullOut()
{
    m_port->unplug();
    m_log.event(QStringLiteral("unplugged"));
    QTimer::singleShot(ReturnMs, m_port.get(), [this] { (void)m_port->plugIn(); });
}

void Replay::tell(const QString &difference)
{
    if (difference.isEmpty()) {
        m_log.event(QStringLiteral("same"));
    } else {
        m_log.event(QStringLiteral("differs"), difference);
        ++m_log.violations;
    }
    emit quit();
}

int runReplay(const QStringList &arguments)
{
    return runEnd<Replay>(readReplayOptions(arguments));
}
