#include "tools/linesim/channel_switch.h"

const ChannelSwitch::Command ChannelSwitch::commands[] = {
    {"call", &ChannelSwitch::doCall},     // NUMBER HABITS: call the terminal; without habits like any caller
    {"hang", &ChannelSwitch::doHangUp},   // hang up
    {"ask", &ChannelSwitch::doAsk},       // ask who is there
    {"ao", &ChannelSwitch::doAnswerback}, // send the party's answerback
    {"telegram", &ChannelSwitch::doTelegram},
    {"check", &ChannelSwitch::doCheck},     // "ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ"
    {"crypt", &ChannelSwitch::doCrypt},     // encrypted text
    {"say", &ChannelSwitch::doSay},         // text as it is, with \r and \n for line ends
    {"point", &ChannelSwitch::doPoint},     // tell the channel's name
    {"windows", &ChannelSwitch::doWindows}, // on, off: let the terminal's text come, hold it back
    {"drop", &ChannelSwitch::doDrop},       // drop the link at once
    {"figures", &ChannelSwitch::doFigures},
    {"quit", &ChannelSwitch::doQuit},
};

void ChannelSwitch::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    if (name.isEmpty())
        return;
    m_line.setTime(QDateTime::currentDateTime());
    for (const Command &known : commands) {
        if (name == QLatin1String(known.name))
            return (this->*known.action)(command.section(QLatin1Char(' '), 1));
    }
    m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
}

void ChannelSwitch::doCall(const QString &numberAndHabits)
{
    const QString words = numberAndHabits.section(QLatin1Char(' '), 1).trimmed();
    QString wrong;
    const std::optional<Habits> habits =
        words.isEmpty() ? SwitchedLine::callersHabits() : parseHabits(words, wrong);
    if (!habits)
        return m_log.event(QStringLiteral("error"), QStringLiteral("no habit ") + wrong);
    m_line.call(numberAndHabits.section(QLatin1Char(' '), 0, 0), *habits);
}

void ChannelSwitch::doHangUp(const QString &)
{
    m_line.hangUp();
}

/// What a party does needs a connection.
void ChannelSwitch::perform(Deed::What what)
{
    if (m_line.state() == SwitchedLine::Up)
        m_line.party().perform(what);
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
    m_link.sendText(unescaped(text));
}

void ChannelSwitch::doPoint(const QString &name)
{
    m_told = true;
    m_link.sendText(QStringLiteral("ТОЧКА 01 КАНАЛ: ") + name + QStringLiteral("\r\n"));
}

void ChannelSwitch::doWindows(const QString &onOff)
{
    m_link.setGrants(onOff != QStringLiteral("off"));
}

void ChannelSwitch::doDrop(const QString &)
{
    m_tcp.drop();
}

void ChannelSwitch::doFigures(const QString &)
{
    m_log.event(QStringLiteral("figures"), QStringLiteral("connections %1").arg(m_line.connections));
}

void ChannelSwitch::doQuit(const QString &)
{
    doFigures(QString());
    emit quit();
}
