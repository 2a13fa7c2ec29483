#include "tools/linesim/centre/centre.h"

#include <QFile>

bool Centre::runOwn(const QString &name, const QString &argument)
{
    static const NamedCommand<Centre> commands[] = {
        {"send", &Centre::doSend},              // a telegram, with \r and \n for line ends, at once
        {"send-file", &Centre::doSendFile},     // the telegram of a file, when the channel allows
        {"category", &Centre::doCategory},      // a telegram announced as one with a category, likewise
        {"r", &Centre::doR},                    // a telegram that must be confirmed, likewise
        {"raw", &Centre::doRaw},                // text as it is, without a form
        {"cut", &Centre::doCutNext},            // drop the link within the next telegram of the terminal
        {"cut-sending", &Centre::doCutSending}, // drop it within the next telegram to the terminal
        {"talk", &Centre::doTalk},              // hear free text from now on without blame
        {"figures", &Centre::doFigures},
    };
    m_desk.setTime(QDateTime::currentDateTime());
    return runFrom(commands, *this, name, argument) || m_desk.run(name, argument);
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
    m_line->sendText(unescaped(text));
}

void Centre::doCutNext(const QString &)
{
    m_cutNext = true;
}

void Centre::doCutSending(const QString &)
{
    m_cutSending = true;
}

void Centre::sayFigures()
{
    m_log.event(QStringLiteral("figures"),
                m_desk.figures() +
                    QStringLiteral(" in all %1/%2").arg(m_desk.gotInAll).arg(m_desk.sentInAll));
}

void Centre::doFigures(const QString &)
{
    sayFigures();
}

void Centre::doTalk(const QString &)
{
    m_desk.talk();
}
