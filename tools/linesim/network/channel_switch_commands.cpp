#include "tools/linesim/network/channel_switch.h"

bool ChannelSwitch::runOwn(const QString &name, const QString &argument)
{
    static const NamedCommand<ChannelSwitch> commands[] = {
        {"call", &ChannelSwitch::doCall}, // NUMBER HABITS: call the terminal; without habits like any caller
        {"hang", &ChannelSwitch::doHangUp},   // hang up
        {"ask", &ChannelSwitch::doAsk},       // ask who is there
        {"ao", &ChannelSwitch::doAnswerback}, // send the party's answerback
        {"telegram", &ChannelSwitch::doTelegram},
        {"check", &ChannelSwitch::doCheck}, // "ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ"
        {"crypt", &ChannelSwitch::doCrypt}, // encrypted text
        {"say", &ChannelSwitch::doSay},     // text as it is, with \r and \n for line ends
        {"point", &ChannelSwitch::doPoint}, // tell the channel's name
        {"figures", &ChannelSwitch::doFigures},
    };
    m_exchange.setTime(QDateTime::currentDateTime());
    return runFrom(commands, *this, name, argument);
}

void ChannelSwitch::doCall(const QString &numberAndHabits)
{
    const QString words = numberAndHabits.section(QLatin1Char(' '), 1).trimmed();
    QString wrong;
    const std::optional<Habits> habits =
        words.isEmpty() ? SwitchedLine::callersHabits() : parseHabits(words, wrong);
    if (!habits)
        return m_log.event(QStringLiteral("error"), QStringLiteral("no habit ") + wrong);
    m_exchange.call(numberAndHabits.section(QLatin1Char(' '), 0, 0), *habits);
}

void ChannelSwitch::doHangUp(const QString &)
{
    m_exchange.hangUp();
}

/// What a party does needs a connection.
void ChannelSwitch::perform(Deed::What what)
{
    if (m_exchange.state() == SwitchedLine::Up)
        m_exchange.party().perform(what);
    else
        m_log.event(QStringLiteral("error"), QStringLiteral("no connection"));
}

void ChannelSwitch::doAsk(const QString &)
{
    perform(Deed::Ask);
}

void ChannelSwitch::doAnswerback(const QString &)
{
    perform(Deed::OwnAnswerback);
}

void ChannelSwitch::doTelegram(const QString &)
{
    perform(Deed::Telegram);
}

void ChannelSwitch::doCheck(const QString &)
{
    perform(Deed::Check);
}

void ChannelSwitch::doCrypt(const QString &)
{
    perform(Deed::Crypt);
}

void ChannelSwitch::doSay(const QString &text)
{
    m_line->sendText(unescaped(text));
}

void ChannelSwitch::doPoint(const QString &name)
{
    m_told = true;
    m_line->sendText(QStringLiteral("ТОЧКА 01 КАНАЛ: ") + name + QStringLiteral("\r\n"));
}

void ChannelSwitch::sayFigures()
{
    m_log.event(QStringLiteral("figures"), QStringLiteral("connections %1").arg(m_exchange.connections));
}

void ChannelSwitch::doFigures(const QString &)
{
    sayFigures();
}
