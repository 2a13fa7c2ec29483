#include "tests/kill/direct_day.h"

#include <numeric>

namespace
{
constexpr int Speed = 10;
constexpr int PauseSeconds = 3; ///< between telegrams: two of one second would bear one name

QString mark(int number)
{
    return QStringLiteral("ВХОДЯЩАЯ %1=").arg(number);
}
} // namespace

DirectDay::DirectDay()
    : Day(QStringLiteral("2026-07-31 12:00:00"), Speed),
      m_office(QStringLiteral("peer"), clock(),
               {QStringLiteral("--speed"), QStringLiteral("0"), QStringLiteral("--pause"),
                QStringLiteral("1500"), QStringLiteral("--window-pause"), QStringLiteral("0")})
{
    station.callTo(m_office.port);
    for (int i = 1; i <= 3; ++i) {
        const QString words = QStringLiteral("ИСХОДЯЩАЯ %1=").arg(i);
        queue({QStringLiteral("20260731u00%1.260731_00000%1").arg(i),
               telegram(words + QStringLiteral("\r\n")), words});
        m_incoming << telegram(mark(i) + QStringLiteral("\r\n"));
        m_given << 0;
    }
}

int DirectDay::givenInAll() const
{
    return std::accumulate(m_given.begin(), m_given.end(), 0);
}

/// What the office has noted since the last telegram was all on the line; nothing if it is not.
QStringList DirectDay::noted() const
{
    const int gone = m_office.lines.lastIndexOf(QStringLiteral("sent: %1").arg(givenInAll()));
    return gone < 0 ? QStringList() : m_office.lines.mid(gone);
}

void DirectDay::tend()
{
    if (m_confirmed == m_incoming.size())
        return;
    if (m_sinceConfirmed.isValid() && m_sinceConfirmed.elapsed() < passing(PauseSeconds))
        return;
    if (givenInAll() > 0 && !m_sinceConfirmed.isValid()) {
        const QStringList since = noted();
        const bool confirmed =
            !since.filter(QStringLiteral("line: ")).filter(QStringLiteral("СООБЩЕНИЕ ПРИНЯТО")).isEmpty();
        const bool linkIsNew = !since.filter(QStringLiteral("ready")).isEmpty();
        if (!confirmed && !linkIsNew)
            return;
        if (confirmed)
            ++m_confirmed;
        return m_sinceConfirmed.start();
    }
    m_sinceConfirmed.invalidate();
    m_office.send(m_incoming.at(m_confirmed));
    ++m_given[m_confirmed];
}

bool DirectDay::isOver() const
{
    return m_confirmed == m_incoming.size() && Day::isOver();
}

QString DirectDay::progress() const
{
    return m_office.lines.join(QLatin1Char('\n')) + QLatin1Char('\n') + Day::progress();
}

int DirectDay::arrived(const Outgoing &telegram) const
{
    return m_office.telegrams().count(telegram.text);
}

/// The office gave a telegram to the line again that it saw no confirmation of.
QStringList DirectDay::wrongReceipts() const
{
    QStringList wrong = m_office.violations();
    int unstored = 0;
    for (int i = 1; i <= m_incoming.size(); ++i) {
        const QStringList stored = storedWith(mark(i));
        unstored += stored.isEmpty() ? 1 : 0;
        if (stored.size() > m_given.at(i - 1) || unstored > toldUnstored())
            wrong << QStringLiteral("%1 given %2 times, stored as %3")
                         .arg(mark(i))
                         .arg(m_given.at(i - 1))
                         .arg(stored.join(QLatin1Char(' ')));
        for (const QString &name : stored)
            if (station.read(QStringLiteral("inp/") + name) != m_incoming.at(i - 1).toUtf8())
                wrong << QStringLiteral("%1 is not what came").arg(name);
    }
    return wrong;
}
