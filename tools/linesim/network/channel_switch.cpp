#include "tools/linesim/network/channel_switch.h"

#include "tools/linesim/console/run_until_quit.h"

namespace
{
constexpr qint64 SilenceMs = 3000; ///< after which an unended form is what it is
constexpr int DigitPauseMs = 1000;

SwitchedLine::Settings onLine(SwitchedLine::Settings settings, const FarLine &line)
{
    if (line.comesInPieces())
        settings.digitPauseMs = DigitPauseMs;
    return settings;
}

/// The text of the terminal's answerback, behind its opening.
QString answerbackOn(const FarLine &line, const QString &text)
{
    const QString opening = QStringLiteral("#\r\n");
    return line.asHeard(opening + text).mid(opening.size());
}
} // namespace

ChannelSwitch::ChannelSwitch(const ChannelSwitchOptions &options, EventLog &log)
    : FarEnd(options, log), m_channelName(options.channelName), m_stores(!options.storeDirectory.isEmpty()),
      m_exchange(onLine(options.line, *m_line), log),
      m_reader(answerbackOn(*m_line, options.terminalAnswerback))
{
    connect(&m_exchange, &SwitchedLine::send, m_line.get(), &FarLine::sendText);
}

void ChannelSwitch::takeConnection()
{
    m_told = m_channelName.isEmpty();
    m_exchange.setTime(QDateTime::currentDateTime());
}

void ChannelSwitch::takeLoss()
{
    m_exchange.lineLost();
    m_reader.forget();
}

void ChannelSwitch::takeText(const QString &text)
{
    m_lastText = QDateTime::currentMSecsSinceEpoch();
    m_exchange.setTime(QDateTime::currentDateTime());
    if (m_stores)
        (void)m_store.takeText(text);
    m_reader.take(text);
    while (const std::optional<SwitchItem> item = m_reader.next())
        m_exchange.take(*item);
}

void ChannelSwitch::tick(const QDateTime &now)
{
    m_exchange.setTime(now);
    if (m_reader.isInside() && now.toMSecsSinceEpoch() - m_lastText > SilenceMs)
        while (const std::optional<SwitchItem> rest = m_reader.giveUp())
            m_exchange.take(*rest);
    if (!m_line->isReady())
        return;
    if (!m_told)
        tellChannel(m_channelName);
    m_exchange.tick();
}

int runChannelSwitch(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    return runEnd<ChannelSwitch>(readChannelSwitchOptions(arguments, adapter));
}
