#include "tools/linesim/centre.h"

#include <QFile>

#include <cstdio>

const Centre::Command Centre::commands[] = {
    {"open", &Centre::doOpen},          // ask the terminal to open
    {"close", &Centre::doClose},        // declare the channel closed
    {"ask", &Centre::doAsk},            // ask for a receipt request
    {"send", &Centre::doSend},          // a telegram, with \r and \n for line ends, at once
    {"send-file", &Centre::doSendFile}, // the telegram of a file, when the channel allows
    {"category", &Centre::doCategory},  // a telegram announced as one with a category, likewise
    {"r", &Centre::doR},                // a telegram that must be confirmed, likewise
    {"kg", &Centre::doKG},              // a service message
    {"raw", &Centre::doRaw},            // text as it is, without a form
    {"repeat", &Centre::doRepeat},      // all telegrams of the day from a number on
    {"renumber", &Centre::doRenumber},
    {"lose-receipt", &Centre::doLoseReceipt}, // the next receipt request finds no ear
    {"distort", &Centre::doDistort},          // the next telegram of the terminal
    {"wrong-number", &Centre::doWrongNumber}, // the next telegram goes under a wrong number first
    {"interrupt", &Centre::doInterrupt},      // the next telegram breaks off and begins anew
    {"cut", &Centre::doCutNext},              // drop the link within the next telegram of the terminal
    {"drop", &Centre::doDrop},                // drop it at once
    {"silence", &Centre::doSilence},
    {"speak", &Centre::doSpeak},
    {"figures", &Centre::doFigures},
    {"quit", &Centre::doQuit},
};

void Centre::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    if (name.isEmpty())
        return;
    m_desk.setTime(QDateTime::currentDateTime());
    for (const Command &known : commands) {
        if (name == QLatin1String(known.name))
            return (this->*known.action)(command.section(QLatin1Char(' '), 1));
    }
    m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
}

void Centre::doOpen(const QString &)
{
    m_desk.askToOpen();
}

void Centre::doClose(const QString &)
{
    m_desk.closeChannel();
}

void Centre::doAsk(const QString &)
{
    m_desk.askForReceiptRequest();
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

void Centre::doKG(const QString &text)
{
    m_desk.sendService(unescaped(text));
}

void Centre::doRaw(const QString &text)
{
    m_link.sendText(unescaped(text));
}

void Centre::doRepeat(const QString &number)
{
    m_desk.repeatFrom(number.toInt());
}

void Centre::doRenumber(const QString &)
{
    m_desk.renumber();
}

void Centre::doLoseReceipt(const QString &)
{
    m_desk.loseReceipt();
}

void Centre::doDistort(const QString &)
{
    m_desk.distort();
}

void Centre::doWrongNumber(const QString &)
{
    m_desk.wrongNumber();
}

void Centre::doInterrupt(const QString &)
{
    m_desk.interrupt();
}

void Centre::doCutNext(const QString &)
{
    m_cutNext = true;
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
