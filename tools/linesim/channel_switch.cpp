#include "tools/linesim/channel_switch.h"

#include "tools/linesim/command_reader.h"

#include <QCoreApplication>

namespace
{
constexpr qint64 SilenceMs = 3000; ///< after which an unended form is what it is
} // namespace

ChannelSwitch::ChannelSwitch(const ChannelSwitchOptions &options, EventLog &log)
    : m_options(options), m_log(log), m_tcp(options.tcp, log), m_link(options.link, log),
      m_line(options.line, log), m_reader(options.terminalAnswerback), m_store(options.storeDirectory, log)
{
    connect(&m_tcp, &TcpEnd::connected, this, &ChannelSwitch::takeConnection);
    connect(&m_tcp, &TcpEnd::disconnected, this, [this] {
        m_link.close();
        m_line.lineLost();
        m_reader.forget();
    });
    connect(&m_tcp, &TcpEnd::received, this, [this](const QByteArray &bytes) {
        if (!m_options.storeDirectory.isEmpty())
            m_store.takeBytes(bytes);
        m_link.take(bytes);
    });
    connect(&m_link, &LinkEnd::write, &m_tcp, &TcpEnd::write);
    connect(&m_link, &LinkEnd::text, this, &ChannelSwitch::takeText);
    connect(&m_line, &SwitchedLine::send, &m_link, &LinkEnd::sendText);
    connect(&m_timer, &QTimer::timeout, this, &ChannelSwitch::tick);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(LinkEnd::TickMs);
}

bool ChannelSwitch::start()
{
    if (!m_options.scenario.isEmpty() && !m_scenario.load(m_options.scenario)) {
        m_log.event(QStringLiteral("error"), QStringLiteral("scenario ") + m_options.scenario);
        return false;
    }
    return m_tcp.start();
}

void ChannelSwitch::takeConnection()
{
    m_told = m_options.channelName.isEmpty();
    m_link.open();
    m_line.setTime(QDateTime::currentDateTime());
    for (const QPair<int, QString> &timed : qAsConst(m_options.timed))
        QTimer::singleShot(timed.first, this, [this, command = timed.second] { run(command); });
}

void ChannelSwitch::takeText(const QString &text)
{
    m_lastText = QDateTime::currentMSecsSinceEpoch();
    m_line.setTime(QDateTime::currentDateTime());
    if (!m_options.storeDirectory.isEmpty())
        (void)m_store.takeText(text);
    m_reader.take(text);
    while (const std::optional<SwitchItem> item = m_reader.next())
        m_line.take(*item);
}

void ChannelSwitch::tick()
{
    m_link.tick();
    const QDateTime now = QDateTime::currentDateTime();
    for (const QString &command : m_scenario.due(now))
        run(command);
    m_line.setTime(now);
    if (m_reader.isInside() && now.toMSecsSinceEpoch() - m_lastText > SilenceMs)
        while (const std::optional<SwitchItem> rest = m_reader.giveUp())
            m_line.take(*rest);
    if (!m_link.isReady())
        return;
    if (!m_told)
        doPoint(m_options.channelName);
    m_line.tick();
}

int runChannelSwitch(const QStringList &arguments)
{
    const std::optional<ChannelSwitchOptions> options = readChannelSwitchOptions(arguments);
    if (!options)
        return 2;
    EventLog log;
    ChannelSwitch network(*options, log);
    CommandReader reader;
    QObject::connect(&reader, &CommandReader::command, &network, &ChannelSwitch::run);
    QObject::connect(&network, &ChannelSwitch::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!network.start())
        return 2;
    QCoreApplication::exec();
    return log.violations > 0 ? 1 : 0;
}
