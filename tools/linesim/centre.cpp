#include "tools/linesim/centre.h"

#include "tools/linesim/command_reader.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

namespace
{
constexpr qint64 SilenceMs = 8000; ///< after which an unended message is broken
} // namespace

Centre::Centre(const CentreOptions &options, EventLog &log)
    : m_options(options), m_log(log), m_tcp(options.tcp, log), m_link(options.link, log),
      m_desk(options.desk, log), m_store(options.storeDirectory, log)
{
    connect(&m_tcp, &TcpEnd::connected, this, &Centre::takeConnection);
    connect(&m_tcp, &TcpEnd::disconnected, this, &Centre::takeLoss);
    connect(&m_tcp, &TcpEnd::received, this, [this](const QByteArray &bytes) {
        m_store.takeBytes(bytes);
        m_link.take(bytes);
    });
    connect(&m_link, &LinkEnd::write, &m_tcp, &TcpEnd::write);
    connect(&m_link, &LinkEnd::text, this, &Centre::takeText);
    connect(&m_desk, &CentreDesk::send, this, &Centre::sendText);
    connect(&m_timer, &QTimer::timeout, this, &Centre::tick);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(LinkEnd::TickMs);
    const QDir directory(options.sendDirectory);
    if (!options.sendDirectory.isEmpty())
        for (const QString &name : directory.entryList(QDir::Files, QDir::Name))
            doSendFile(directory.filePath(name));
}

bool Centre::start()
{
    if (!m_options.scenario.isEmpty() && !m_scenario.load(m_options.scenario)) {
        m_log.event(QStringLiteral("error"), QStringLiteral("scenario ") + m_options.scenario);
        return false;
    }
    return m_tcp.start();
}

void Centre::takeConnection()
{
    m_link.open();
    m_linkIsNew = true;
    for (const QPair<int, QString> &timed : qAsConst(m_options.timed))
        QTimer::singleShot(timed.first, this, [this, command = timed.second] { run(command); });
}

void Centre::takeLoss()
{
    m_link.close();
    m_desk.setTime(QDateTime::currentDateTime());
    if (const std::optional<TerminalMessage> broken = m_reader.giveUp())
        m_desk.take(*broken);
    m_reader.expectRest();
    m_desk.lineLost();
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
        m_tcp.drop();
    }
}

void Centre::sendText(const QString &text)
{
    static const QRegularExpression telegram(QStringLiteral("ЗЦЗЦ #?[0-9]{3} "));
    if (!m_cutSending || !text.contains(telegram))
        return m_link.sendText(text);
    m_cutSending = false;
    m_log.event(QStringLiteral("cut"), QStringLiteral("sending"));
    m_link.sendText(text.left(text.size() / 2));
    m_tcp.close();
}

void Centre::tick()
{
    m_link.tick();
    const QDateTime now = QDateTime::currentDateTime();
    m_desk.setTime(now);
    if (m_linkIsNew && m_link.isReady()) {
        m_linkIsNew = false;
        m_desk.lineBack();
    }
    for (const QString &command : m_scenario.due(now))
        run(command);
    // A message may pause as long as an answer may take.
    if (m_reader.isInside() &&
        now.toMSecsSinceEpoch() - m_lastText > qMax(SilenceMs, qint64(m_options.link.answerMs)))
        if (const std::optional<TerminalMessage> broken = m_reader.giveUp())
            m_desk.take(*broken);
    feed();
}

/// Telegrams that wait go one by one while the channel is open and the terminal does not send.
void Centre::feed()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (m_feed.isEmpty() || !m_link.isReady() || !m_desk.mayFeed() || m_reader.isInside() ||
        now - m_lastFeed < m_options.feedPauseMs || now - m_lastText < 1000)
        return;
    m_lastFeed = now;
    const Waiting next = m_feed.takeFirst();
    (m_desk.*next.send)(next.text);
}

int runCentre(const QStringList &arguments)
{
    const std::optional<CentreOptions> options = readCentreOptions(arguments);
    if (!options)
        return 2;
    EventLog log;
    Centre centre(*options, log);
    CommandReader reader;
    QObject::connect(&reader, &CommandReader::command, &centre, &Centre::run);
    QObject::connect(&centre, &Centre::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!centre.start())
        return 2;
    QCoreApplication::exec();
    return log.violations > 0 ? 1 : 0;
}
