#include "tests/month/centre_office.h"

namespace
{
constexpr int FiguresMs = 500; ///< between two questions for them
} // namespace

CentreOffice::CentreOffice(SteppedTime &clock)
    : Office(clock, 0),
      m_centre(QStringLiteral("centre"), clock.clock(),
               {QStringLiteral("--pause"), QStringLiteral("8000"), QStringLiteral("--window-pause"),
                QStringLiteral("0"), QStringLiteral("--crossing"), QStringLiteral("300")})
{
    station.callTo(m_centre.port);
    m_sinceFigures.start();
}

void CentreOffice::giveIncoming(const QString &mark)
{
    m_centre.send(textOf(mark), QStringLiteral("send-file"));
}

void CentreOffice::giveOutgoing(int number, const QString &mark)
{
    queue(QStringLiteral("%1u%2").arg(day()).arg(number, 3, 10, QLatin1Char('0')),
          QStringLiteral("П123456\r\n") + textOf(mark));
}

void CentreOffice::tend()
{
    if (m_sinceFigures.elapsed() < FiguresMs)
        return;
    m_centre.command(QStringLiteral("figures"));
    m_sinceFigures.start();
}

int CentreOffice::arrived(const QString &mark) const
{
    return logOfDay(QStringLiteral("telegram: ")).filter(onOneLine(textOf(mark))).size();
}

/// Both sides count the same.
bool CentreOffice::isOver() const
{
    const QStringList figures = logOfDay(QStringLiteral("figures: "));
    return !figures.isEmpty() && Office::isOver() &&
           figures.last().startsWith(
               QStringLiteral("figures: got %1 sent %2 ")
                   .arg(station.state(QStringLiteral("PK_out")), station.state(QStringLiteral("PK_in"))));
}

bool CentreOffice::hasTurned() const
{
    return !logOfDay(QStringLiteral("day: ")).isEmpty() &&
           !logOfDay(QStringLiteral("СМЕНА НУМЕРАЦИИ")).isEmpty();
}
