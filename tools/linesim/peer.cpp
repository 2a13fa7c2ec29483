#include "tools/linesim/peer.h"

#include "tools/linesim/run_until_quit.h"

#include <QTime>

Peer::Peer(const PeerOptions &options, EventLog &log)
    : FarEnd(options, log), m_confirms(options.confirm), m_feed(options.feed, log)
{
    if (!options.sendDirectory.isEmpty())
        m_feed.addDirectory(options.sendDirectory);
}

void Peer::takeConnection()
{
    m_feed.restart();
    m_store.forgetUnfinished();
}

void Peer::takeText(const QString &text)
{
    const int completed = m_store.takeText(text);
    for (int i = 0; i < completed && m_confirms; ++i)
        confirm();
}

void Peer::confirm()
{
    m_line->sendText(QStringLiteral("\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  ") +
                     QTime::currentTime().toString(QStringLiteral("hhmm")) + QStringLiteral("\r\n"));
    m_log.event(QStringLiteral("confirmed"), QString::number(m_store.count));
}

void Peer::tick(const QDateTime &)
{
    if (!m_line->isReady())
        return;
    const QString text = m_feed.tick(FarLine::TickMs);
    if (!text.isEmpty())
        m_line->sendText(text);
}

int runPeer(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    return runEnd<Peer>(readPeerOptions(arguments, adapter));
}
