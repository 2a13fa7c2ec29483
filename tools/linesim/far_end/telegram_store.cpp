#include "tools/linesim/far_end/telegram_store.h"

#include "tools/linesim/console/event_log.h"

#include <QDir>
#include <QFile>

namespace
{
constexpr int LongestMark = 6;

/// The first of the two marks in \a text from \a from on, -1 if there is none.
int indexOfEither(const QString &text, const QString &one, const QString &other, int from = 0)
{
    const int first = text.indexOf(one, from);
    const int second = text.indexOf(other, from);
    return first < 0 ? second : second < 0 ? first : qMin(first, second);
}
/// Position of the first start mark in \a text, -1 if there is none.
int indexOfStart(const QString &text)
{
    const QString one = QStringLiteral("ЗЦЗЦ "), other = QStringLiteral("ZCZC ");
    const bool atOnce = text.startsWith(one) || text.startsWith(other);
    return atOnce ? 0 : indexOfEither(text, one, other);
}

} // namespace

TelegramStore::TelegramStore(const QString &directory, EventLog &log) : m_directory(directory), m_log(log)
{
    if (!m_directory.isEmpty())
        QDir().mkpath(m_directory);
}

void TelegramStore::takeBytes(const QByteArray &bytes)
{
    append(QStringLiteral("stream.bin"), bytes);
}

QStringList TelegramStore::takeText(const QString &text)
{
    append(QStringLiteral("stream.txt"), text.toUtf8());
    m_pending += text;
    QStringList completed;
    while (takeOne(completed)) {
    }
    return completed;
}

void TelegramStore::forgetUnfinished()
{
    m_pending.clear();
    m_searched = 0;
}

// A long telegram comes in a hundred thousand pieces: each is looked at once.
bool TelegramStore::takeOne(QStringList &completed)
{
    const int start = indexOfStart(m_pending);
    if (start < 0) {
        m_pending = m_pending.right(LongestMark);
        return false;
    }
    if (start > 0)
        m_searched = 0;
    m_pending.remove(0, start);
    const int end = indexOfEither(m_pending, QStringLiteral("НННН  "), QStringLiteral("NNNN  "), m_searched);
    if (end < 0) {
        m_searched = qMax(0, m_pending.size() - LongestMark + 1);
        return false;
    }
    m_searched = 0;
    const QString telegram = m_pending.left(end + LongestMark);
    m_pending.remove(0, telegram.size());
    if (telegram.contains(QLatin1Char('\r')) || telegram.contains(QLatin1Char('\n'))) {
        save(telegram);
        completed << telegram;
    } else {
        m_log.event(QStringLiteral("line"), escaped(telegram));
    }
    return true;
}

void TelegramStore::save(const QString &telegram)
{
    ++count;
    const QString name = QStringLiteral("%1.txt").arg(count, 3, 10, QLatin1Char('0'));
    append(name, telegram.toUtf8());
    m_log.event(QStringLiteral("telegram"), QStringLiteral("%1 %2").arg(name).arg(telegram.size()));
}

void TelegramStore::append(const QString &name, const QByteArray &bytes)
{
    if (m_directory.isEmpty())
        return;
    QFile file(QDir(m_directory).filePath(name));
    if (!file.open(QIODevice::Append) || file.write(bytes) != bytes.size())
        m_log.event(QStringLiteral("error"),
                    QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
}
