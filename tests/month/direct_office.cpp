#include "tests/month/direct_office.h"

DirectOffice::DirectOffice(SteppedTime &clock)
    : Office(clock, 2), m_office(QStringLiteral("peer"), clock.clock(),
                                 {QStringLiteral("--speed"), QStringLiteral("0"),
                                  QStringLiteral("--window-pause"), QStringLiteral("0")})
{
    station.callTo(m_office.port);
    station.set(QStringLiteral("Direct/SendConfirmation"), QStringLiteral("true"));
}

void DirectOffice::giveOutgoing(int number, const QString &mark)
{
    queue(QStringLiteral("%1u%2.%3_000000").arg(day()).arg(number, 3, 10, QLatin1Char('0')).arg(day().mid(2)),
          telegram(textOf(mark)));
}

void DirectOffice::tend()
{
    const int confirmed =
        m_office.lines.filter(QStringLiteral("line: ")).filter(QStringLiteral("СООБЩЕНИЕ ПРИНЯТО")).size();
    if (confirmed < m_given)
        return m_stored.clear();
    if (m_stored.isEmpty())
        m_stored = lastTick();
    // Of two telegrams within one second of the clock only the later is kept.
    if (m_waiting.isEmpty() || (m_given > 0 && m_stored == lastTick()))
        return;
    m_office.send(telegram(textOf(m_waiting.takeFirst())));
    ++m_given;
}

bool DirectOffice::isOver() const
{
    return m_waiting.isEmpty() && Office::isOver();
}

int DirectOffice::arrived(const QString &mark) const
{
    return logOfDay(mark).size();
}
