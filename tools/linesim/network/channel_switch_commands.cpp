#include "tools/linesim/network/channel_switch.h"

bool ChannelSwitch::runHere(const QString &name, const QString &argument)
{
    static const Command<ChannelSwitch> commands[] = {
        // NUMBER HABITS: call the terminal; without habits like any caller
        {"call", [](ChannelSwitch &s, const QString &call) { s.callTerminal(call); }},
        {"hang", [](ChannelSwitch &s, const QString &) { s.m_exchange.hangUp(); }},
        {"ask", [](ChannelSwitch &s, const QString &) { s.perform(Deed::Ask); }},          // who is there
        {"ao", [](ChannelSwitch &s, const QString &) { s.perform(Deed::OwnAnswerback); }}, // of the party
        {"telegram", [](ChannelSwitch &s, const QString &) { s.perform(Deed::Telegram); }},
        {"telegram-text", // what it is from now on
         [](ChannelSwitch &s, const QString &text) { s.m_exchange.party().setTelegram(unescaped(text)); }},
        {"check",
         [](ChannelSwitch &s, const QString &) { s.perform(Deed::Check); }}, // "ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ"
        {"crypt", [](ChannelSwitch &s, const QString &) { s.perform(Deed::Crypt); }}, // encrypted text
        // Text as it is, with \r and \n for line ends
        {"say", [](ChannelSwitch &s, const QString &text) { s.m_line->sendText(unescaped(text)); }},
        {"point", [](ChannelSwitch &s, const QString &channel) { s.tellChannel(channel); }},
        {"figures", [](ChannelSwitch &s, const QString &) { s.sayFigures(); }},
    };
    m_exchange.setTime(QDateTime::currentDateTime());
    return runFrom(commands, *this, name, argument);
}

void ChannelSwitch::callTerminal(const QString &numberAndHabits)
{
    const QString words = numberAndHabits.section(QLatin1Char(' '), 1).trimmed();
    QString wrong;
    const std::optional<Habits> habits =
        words.isEmpty() ? SwitchedLine::callersHabits() : parseHabits(words, wrong);
    if (!habits)
        return m_log.event(QStringLiteral("error"), QStringLiteral("no habit ") + wrong);
    m_exchange.call(numberAndHabits.section(QLatin1Char(' '), 0, 0), *habits);
}

/// What a party does needs a connection.
void ChannelSwitch::perform(Deed::What what)
{
    if (m_exchange.state() == SwitchedLine::Up)
        m_exchange.party().perform(what);
    else
        m_log.event(QStringLiteral("error"), QStringLiteral("no connection"));
}

void ChannelSwitch::tellChannel(const QString &name)
{
    m_told = true;
    m_line->sendText(QStringLiteral("ТОЧКА 01 КАНАЛ: ") + name + QStringLiteral("\r\n"));
}

void ChannelSwitch::sayFigures()
{
    m_log.event(QStringLiteral("figures"), QStringLiteral("connections %1").arg(m_exchange.connections));
}
