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

int TelegramStore::takeText(const QString &text)
{
    append(QStringLiteral("stream.txt"), text.toUtf8());
    m_pending += text;
    const int before = count;
    while (takeOne()) {
    }
    return count - before;
}

void TelegramStore::forgetUnfinished()
{
    m_pending.clear();
}

bool TelegramStore::takeOne()
{
    const int start = indexOfEither(m_pending, QStringLiteral("ЗЦЗЦ "), QStringLiteral("ZCZC "));
    if (start < 0) {
        m_pending = m_pending.right(LongestMark);
        return false;
    }
    m_pending.remove(0, start);
    const int end = indexOfEither(m_pending, QStringLiteral("НННН  "), QStringLiteral("NNNN  "));
    if (end < 0)
        return false;
    const QString telegram = m_pending.left(end + LongestMark);
    m_pending.remove(0, telegram.size());
    if (telegram.contains(QLatin1Char('\r')) || telegram.contains(QLatin1Char('\n')))
        save(telegram);
    else
        m_log.event(QStringLiteral("line"), escaped(telegram));
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
