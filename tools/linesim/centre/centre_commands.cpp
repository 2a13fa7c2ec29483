#include "tools/linesim/centre/centre.h"

#include <QFile>

bool Centre::runHere(const QString &name, const QString &argument)
{
    static const Command<Centre> commands[] = {
        // A telegram, with \r and \n for line ends, at once
        {"send", [](Centre &c, const QString &text) { c.m_desk.sendTelegram(unescaped(text)); }},
        // The telegram of a file, when the channel allows; one announced as having a category, and one that
        // must be confirmed, likewise
        {"send-file", [](Centre &c, const QString &path) { c.addFile(path); }},
        {"category",
         [](Centre &c, const QString &text) {
             c.m_feed.append({&CentreDesk::sendCategory, unescaped(text)});
         }},
        {"r",
         [](Centre &c, const QString &text) {
             c.m_feed.append({&CentreDesk::sendR, unescaped(text)});
         }},
        {"raw", [](Centre &c, const QString &text) { c.m_line->sendText(unescaped(text)); }}, // as it is
        // Drop the link within the next telegram of the terminal, or to it
        {"cut", [](Centre &c, const QString &) { c.m_cutNext = true; }},
        {"cut-sending", [](Centre &c, const QString &) { c.m_cutSending = true; }},
        {"talk", [](Centre &c, const QString &) { c.m_desk.talk(); }}, // hear free text without blame
        {"figures", [](Centre &c, const QString &) { c.sayFigures(); }},
    };
    m_desk.setTime(QDateTime::currentDateTime());
    return runFrom(commands, *this, name, argument) || m_desk.run(name, argument);
}

void Centre::addFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return m_log.event(QStringLiteral("error"), QStringLiteral("no file ") + path);
    QString text = QString::fromUtf8(file.readAll());
    if (!text.contains(QLatin1Char('\r')))
        text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    m_feed.append({&CentreDesk::sendTelegram, text});
}

void Centre::sayFigures()
{
    m_log.event(QStringLiteral("figures"),
                m_desk.figures() +
                    QStringLiteral(" in all %1/%2").arg(m_desk.gotInAll).arg(m_desk.sentInAll));
}
