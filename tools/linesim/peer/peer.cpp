#include "tools/linesim/peer/peer.h"

#include "tools/linesim/console/run_until_quit.h"
#include "tools/linesim/serial/mtk2_code.h"

#include <QTime>

Peer::Peer(const PeerOptions &options, EventLog &log)
    : FarEnd(options, log), m_confirms(options.confirm), m_echoes(options.echo), m_feed(options.feed, log)
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
    const QStringList completed = m_store.takeText(text);
    if (m_echoes)
        for (const QString &telegram : completed)
            echo(telegram);
    if (!m_confirms)
        return;
    m_unconfirmed += completed.size();
    confirmWhatWaits();
}

void Peer::echo(const QString &telegram)
{
    Mtk2::Register sent = Mtk2::Latin, read = Mtk2::Latin; // the first letter brings its mark along
    const QString came = Mtk2::decoded(Mtk2::encoded(telegram, sent), read);
    m_feed.addText(QStringLiteral("echo"), QStringLiteral("\r\n") + came + QStringLiteral("\r\n"));
}

/// Behind the telegram that is on its way, if there is one: within it the end mark would end both.
void Peer::confirmWhatWaits()
{
    if (m_feed.isInTheMiddle())
        return;
    for (; m_unconfirmed > 0; --m_unconfirmed)
        confirm(m_store.count - m_unconfirmed + 1);
}

void Peer::confirm(int number)
{
    m_line->sendText(QStringLiteral("\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  ") +
                     QTime::currentTime().toString(QStringLiteral("hhmm")) + QStringLiteral("\r\n"));
    m_log.event(QStringLiteral("confirmed"), QString::number(number));
}

void Peer::tick(const QDateTime &)
{
    if (!m_line->isReady())
        return;
    const QString text = m_feed.tick(FarLine::TickMs);
    if (!text.isEmpty())
        m_line->sendText(text);
    confirmWhatWaits();
}

int runPeer(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    return runEnd<Peer>(readPeerOptions(arguments, adapter));
}
