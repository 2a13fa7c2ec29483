#include "tools/linesim/centre/centre.h"

#include "tools/linesim/console/run_until_quit.h"

#include <QDir>
#include <QRegularExpression>

namespace
{
constexpr qint64 SilenceMs = 8000; ///< after which an unended message is broken
} // namespace

Centre::Centre(const CentreOptions &options, EventLog &log)
    : FarEnd(options, log), m_feedPauseMs(options.feedPauseMs), m_desk(options.desk, log)
{
    connect(&m_desk, &CentreDesk::send, this, &Centre::sendText);
    const QDir directory(options.sendDirectory);
    if (!options.sendDirectory.isEmpty())
        for (const QString &name : directory.entryList(QDir::Files, QDir::Name))
            addFile(directory.filePath(name));
}

void Centre::takeLoss()
{
    m_desk.setTime(QDateTime::currentDateTime());
    giveUp();
    m_desk.lineLost();
}

/// What is under way is broken, and its rest may still come.
void Centre::giveUp()
{
    if (const std::optional<TerminalMessage> broken = m_reader.giveUp())
        m_desk.take(*broken);
    m_reader.expectRest();
}

void Centre::takeText(const QString &text)
{
    m_lastText = QDateTime::currentMSecsSinceEpoch();
    if (!m_reader.isInside())
        m_desk.setMessageStart(QDateTime::currentDateTime());
    (void)m_store.takeText(text);
    m_reader.take(text);
    takeMessages();
}

void Centre::takeMessages()
{
    m_desk.setTime(QDateTime::currentDateTime());
    while (const std::optional<TerminalMessage> message = m_reader.next())
        m_desk.take(*message);
    if (m_cutNext && m_reader.isInsideTelegram()) {
        m_cutNext = false;
        m_log.event(QStringLiteral("cut"));
        m_line->drop();
    }
}

void Centre::sendText(const QString &text)
{
    static const QRegularExpression telegram(QStringLiteral("ЗЦЗЦ #?[0-9]{3} "));
    if (!m_cutSending || !text.contains(telegram))
        return m_line->sendText(text);
    m_cutSending = false;
    m_log.event(QStringLiteral("cut"), QStringLiteral("sending"));
    m_line->sendText(text.left(text.size() / 2));
    m_line->close();
}

void Centre::tick(const QDateTime &now)
{
    m_desk.setTime(now);
    if (m_linkIsNew && m_line->isReady()) {
        m_linkIsNew = false;
        m_desk.lineBack();
    }
    // A message may pause as long as an answer may take.
    if (m_reader.isInside() &&
        now.toMSecsSinceEpoch() - m_lastText > qMax(SilenceMs, qint64(m_line->longestPauseMs())))
        giveUp();
    feed();
}

/// Telegrams that wait go one by one while the channel is open and the terminal does not send.
void Centre::feed()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (m_feed.isEmpty() || !m_line->isReady() || !m_desk.mayFeed() || m_reader.isInside() ||
        now - m_lastFeed < m_feedPauseMs || now - m_lastText < 1000)
        return;
    m_lastFeed = now;
    const Waiting next = m_feed.takeFirst();
    (m_desk.*next.send)(next.text);
}

int runCentre(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    return runEnd<Centre>(readCentreOptions(arguments, adapter));
}
