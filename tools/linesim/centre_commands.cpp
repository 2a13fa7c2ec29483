#include "tools/linesim/centre.h"

#include <QFile>

#include <cstdio>

const Centre::Command Centre::commands[] = {
    {"send", &Centre::doSend},              // a telegram, with \r and \n for line ends, at once
    {"send-file", &Centre::doSendFile},     // the telegram of a file, when the channel allows
    {"category", &Centre::doCategory},      // a telegram announced as one with a category, likewise
    {"r", &Centre::doR},                    // a telegram that must be confirmed, likewise
    {"raw", &Centre::doRaw},                // text as it is, without a form
    {"cut", &Centre::doCutNext},            // drop the link within the next telegram of the terminal
    {"cut-sending", &Centre::doCutSending}, // drop it within the next telegram to the terminal
    {"drop", &Centre::doDrop},              // drop it at once
    {"silence", &Centre::doSilence},
    {"talk", &Centre::doTalk}, // hear free text from now on without blame
    {"speak", &Centre::doSpeak},
    {"figures", &Centre::doFigures},
    {"quit", &Centre::doQuit},
};

void Centre::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    const QString argument = command.section(QLatin1Char(' '), 1);
    if (name.isEmpty())
        return;
    m_desk.setTime(QDateTime::currentDateTime());
    for (const Command &known : commands) {
        if (name == QLatin1String(known.name))
            return (this->*known.action)(argument);
    }
    if (!m_desk.run(name, argument))
        m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
}

void Centre::doSend(const QString &text)
{
    m_desk.sendTelegram(unescaped(text));
}

void Centre::doSendFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return m_log.event(QStringLiteral("error"), QStringLiteral("no file ") + path);
    QString text = QString::fromUtf8(file.readAll());
    if (!text.contains(QLatin1Char('\r')))
        text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    m_feed.append({&CentreDesk::sendTelegram, text});
}

void Centre::doCategory(const QString &text)
{
    m_feed.append({&CentreDesk::sendCategory, unescaped(text)});
}

void Centre::doR(const QString &text)
{
    m_feed.append({&CentreDesk::sendR, unescaped(text)});
}

void Centre::doRaw(const QString &text)
{
    m_link.sendText(unescaped(text));
}

void Centre::doCutNext(const QString &)
{
    m_cutNext = true;
}

void Centre::doCutSending(const QString &)
{
    m_cutSending = true;
}

void Centre::doDrop(const QString &)
{
    m_tcp.drop();
}

void Centre::doSilence(const QString &)
{
    m_link.setSilent(true);
    m_log.event(QStringLiteral("silent"));
}

void Centre::doSpeak(const QString &)
{
    m_link.setSilent(false);
    m_log.event(QStringLiteral("speaking"));
}

void Centre::doFigures(const QString &)
{
    m_log.event(QStringLiteral("figures"),
                m_desk.figures() +
                    QStringLiteral(" in all %1/%2").arg(m_desk.gotInAll).arg(m_desk.sentInAll));
}

void Centre::doQuit(const QString &)
{
    doFigures(QString());
    emit quit();
}

void Centre::doTalk(const QString &)
{
    m_desk.talk();
}
