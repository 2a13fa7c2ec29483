#include "tests/kill/centre_day.h"

#include <QRegularExpression>

namespace
{
constexpr int Speed = 10;
constexpr int MidnightSpeed = 20; // with its quarter of an hour
constexpr int FiguresMs = 500;    ///< between two questions for them

QString mark(int number)
{
    return QStringLiteral("ВХОДЯЩАЯ %1=").arg(number);
}

/// The figure behind \a word in \a line.
QString figure(const QString &line, const QString &word)
{
    return QRegularExpression(word + QStringLiteral(" (\\d+)")).match(line).captured(1);
}
} // namespace

CentreDay::CentreDay(bool midnight)
    : Day(midnight ? QStringLiteral("2026-07-31 23:53:00") : QStringLiteral("2026-07-31 12:00:00"),
          midnight ? MidnightSpeed : Speed),
      m_centre(QStringLiteral("centre"), clock(),
               {QStringLiteral("--pause"), QStringLiteral("3000"), QStringLiteral("--window-pause"),
                QStringLiteral("0")}),
      m_midnight(midnight)
{
    station.callTo(m_centre.port);
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    station.set(QStringLiteral("CORVA/autoConfirmRTimeOut"), QStringLiteral("3"));
    station.set(QStringLiteral("OPERATOR/lastOperator"), QStringLiteral("OPERATOR"));
    giveOutgoing();
    giveIncoming();
    if (midnight)
        giveIncoming();
}

void CentreDay::giveIncoming(bool confirmed)
{
    ++m_incoming;
    if (confirmed)
        m_centre.command(QStringLiteral("r ") + mark(m_incoming) + QStringLiteral("\\r\\n"));
    else
        m_centre.send(mark(m_incoming) + QStringLiteral("\r\n"), QStringLiteral("send-file"));
}

void CentreDay::giveOutgoing()
{
    const int number = outgoing.size() + 1;
    const QString words = QStringLiteral("ИСХОДЯЩАЯ %1=").arg(number);
    queue({QStringLiteral("20260731u%1").arg(number, 3, 10, QLatin1Char('0')),
           QStringLiteral("П123456\r\n") + words + QStringLiteral("\r\n"), words});
}

bool CentreDay::allIsStored() const
{
    for (int i = 1; i <= m_incoming; ++i)
        if (storedWith(mark(i)).isEmpty())
            return false;
    return true;
}

/// A telegram that comes while the workstation waits for a receipt has it ask once more, and the second
/// answer, behind the next telegram, sets that aside: one thing after the other, or a day in peace is none.
bool CentreDay::partIsOver() const
{
    if (!Day::isOver() || !allIsStored())
        return false;
    return m_part > 1 || !m_midnight || !m_centre.lines.filter(QStringLiteral("day: ")).isEmpty();
}

bool CentreDay::isLastPart() const
{
    return m_part == (m_midnight ? 3 : 5);
}

void CentreDay::beginPart()
{
    ++m_part;
    if (m_part % 2 == 0)
        giveIncoming(m_part == 2 && !m_midnight);
    else
        giveOutgoing();
}

void CentreDay::tend()
{
    if (!m_takenTold && !m_midnight && !m_centre.lines.filter(QStringLiteral("telegram: ")).isEmpty()) {
        m_takenTold = true;
        m_centre.command(QStringLiteral("taken"));
    }
    if (!isLastPart() && partIsOver())
        beginPart();
    if (!m_sinceFigures.isValid() || m_sinceFigures.elapsed() > FiguresMs) {
        m_centre.command(QStringLiteral("figures"));
        m_sinceFigures.start();
    }
}

bool CentreDay::isOver() const
{
    if (!isLastPart() || !Day::isOver() || !allIsStored())
        return false;
    if (countersMayLag())
        return true;
    const QString figures = m_centre.lines.filter(QStringLiteral("figures: "))
                                .value(m_centre.lines.filter(QStringLiteral("figures: ")).size() - 1);
    return station.state(QStringLiteral("PK_in")) == figure(figures, QStringLiteral("sent")) &&
           station.state(QStringLiteral("PK_out")) == figure(figures, QStringLiteral("got"));
}

QString CentreDay::progress() const
{
    return m_centre.lines.join(QLatin1Char('\n')) + QLatin1Char('\n') + Day::progress();
}

int CentreDay::arrived(const Outgoing &telegram) const
{
    return m_centre.lines.filter(QStringLiteral("telegram: ")).filter(telegram.mark).size();
}

/// Under the number by which the centre has it.
QString CentreDay::sentName(const Outgoing &telegram) const
{
    const QStringList lines = m_centre.lines.filter(QStringLiteral("telegram: ")).filter(telegram.mark);
    const int number = lines.isEmpty() ? 0 : lines.last().section(QLatin1Char(' '), 1, 1).toInt();
    return telegram.name + QStringLiteral("\\.%1").arg(number, 3, 10, QLatin1Char('0'));
}

/// One that starts on the new day and needs no change to it has died between that change and the renumbering:
/// it has no figures of the old day any more, tells of the difference and waits for the operator, who opens
/// the link by those of the new day.
QStringList CentreDay::violations() const
{
    const QStringList newDay = station.journalOf(QStringLiteral("20260801"));
    const bool forgot = m_midnight && !newDay.filter(QStringLiteral("Запуск ---")).isEmpty() &&
                        newDay.filter(QStringLiteral("Смена суток")).isEmpty() &&
                        !newDay.filter(QStringLiteral("Расхождение за предыдущие сутки: ")).isEmpty();
    const QStringList all = m_centre.violations();
    return forgot ? all.filter(QRegularExpression(QStringLiteral("^(?!.*receipt 0 for the old day)"))) : all;
}

QStringList CentreDay::wrongReceipts() const
{
    QStringList wrong = violations();
    for (int i = 1; i <= m_incoming; ++i) {
        const QStringList stored = storedWith(mark(i));
        const QString sent = m_centre.lines.filter(QStringLiteral("sent: ")).filter(mark(i)).value(0);
        const int number = sent.section(QLatin1Char(' '), 1, 1).toInt();
        if (stored.size() != 1 || QFileInfo(stored.first()).suffix().toInt() != number)
            wrong << QStringLiteral("%1 stored as %2 and not as number %3")
                         .arg(mark(i), stored.join(QLatin1Char(' ')))
                         .arg(number);
    }
    return wrong;
}
