#include "tools/linesim/far_end/telegram_feed.h"

#include "tools/linesim/console/event_log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

TelegramFeed::TelegramFeed(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log) {}

void TelegramFeed::addDirectory(const QString &path)
{
    const QDir directory(path);
    if (!directory.exists())
        m_log.event(QStringLiteral("error"), QStringLiteral("no directory %1").arg(path));
    for (const QString &name : directory.entryList(QDir::Files, QDir::Name))
        addFile(directory.filePath(name));
}

void TelegramFeed::addFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_log.event(QStringLiteral("error"), QStringLiteral("%1: %2").arg(path, file.errorString()));
        return;
    }
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QRegularExpression(QStringLiteral("(?<!\r)\n")), QStringLiteral("\r\n"));
    if (m_settings.wrap)
        text = m_settings.startMark + text + m_settings.endMark;
    addText(QFileInfo(path).fileName(), text);
}

void TelegramFeed::addText(const QString &name, const QString &text)
{
    m_files.append({name, text});
}

QString TelegramFeed::tick(int ms)
{
    if (m_waitMs > 0) {
        m_waitMs -= ms;
        return QString();
    }
    if (m_files.isEmpty())
        return QString();
    const File &file = m_files.first();
    const QString text = file.text.mid(m_gone, dueCharacters(ms));
    m_gone += text.size();
    if (m_gone < file.text.size())
        return text;
    m_log.event(QStringLiteral("sent"), file.name);
    m_files.removeFirst();
    m_gone = m_owed = 0;
    m_waitMs = m_settings.pauseMs;
    if (isEmpty())
        m_log.event(QStringLiteral("done"), QStringLiteral("all sent"));
    return text;
}

void TelegramFeed::restart()
{
    m_gone = m_owed = 0;
}

int TelegramFeed::dueCharacters(int ms)
{
    if (m_settings.charactersPerSecond == 0)
        return -1; // all
    m_owed += ms * m_settings.charactersPerSecond;
    const int due = m_owed / 1000;
    m_owed %= 1000;
    return due;
}
