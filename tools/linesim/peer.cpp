#include "tools/linesim/peer.h"

#include "tools/linesim/command_reader.h"

#include <QCoreApplication>
#include <QTime>

Peer::Peer(const PeerOptions &options, EventLog &log)
    : m_options(options), m_log(log), m_tcp(options.tcp, log), m_link(options.link, log),
      m_feed(options.feed, log), m_store(options.storeDirectory, log)
{
    connect(&m_tcp, &TcpEnd::connected, this, &Peer::takeConnection);
    connect(&m_tcp, &TcpEnd::disconnected, &m_link, &LinkEnd::close);
    connect(&m_tcp, &TcpEnd::received, this, &Peer::takeBytes);
    connect(&m_link, &LinkEnd::write, &m_tcp, &TcpEnd::write);
    connect(&m_link, &LinkEnd::text, this, &Peer::takeText);
    connect(&m_timer, &QTimer::timeout, this, &Peer::tick);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(LinkEnd::TickMs);
    if (!options.sendDirectory.isEmpty())
        m_feed.addDirectory(options.sendDirectory);
}

bool Peer::start()
{
    return m_tcp.start();
}

void Peer::takeConnection()
{
    m_link.open();
    m_feed.restart();
    m_store.forgetUnfinished();
    for (const QPair<int, QString> &timed : qAsConst(m_options.timed))
        QTimer::singleShot(timed.first, this, [this, command = timed.second] { run(command); });
}

void Peer::takeBytes(const QByteArray &bytes)
{
    m_store.takeBytes(bytes);
    m_link.take(bytes);
}

void Peer::takeText(const QString &text)
{
    const int completed = m_store.takeText(text);
    for (int i = 0; i < completed && m_options.confirm; ++i)
        confirm();
}

void Peer::confirm()
{
    m_link.sendText(QStringLiteral("\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  ") +
                    QTime::currentTime().toString(QStringLiteral("hhmm")) + QStringLiteral("\r\n"));
    m_log.event(QStringLiteral("confirmed"), QString::number(m_store.count));
}

void Peer::tick()
{
    m_link.tick();
    if (!m_link.isReady())
        return;
    const QString text = m_feed.tick(LinkEnd::TickMs);
    if (!text.isEmpty())
        m_link.sendText(text);
}

int runPeer(const QStringList &arguments)
{
    const std::optional<PeerOptions> options = readPeerOptions(arguments);
    if (!options)
        return 2;
    EventLog log;
    Peer peer(*options, log);
    CommandReader reader;
    QObject::connect(&reader, &CommandReader::command, &peer, &Peer::run);
    QObject::connect(&peer, &Peer::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!peer.start())
        return 2;
    QCoreApplication::exec();
    return log.violations > 0 ? 1 : 0;
}
