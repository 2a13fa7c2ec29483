#include "tests/month/switched_office.h"

namespace
{
const QString Calls = QStringLiteral("calls: 334455");
} // namespace

SwitchedOffice::SwitchedOffice(SteppedTime &clock)
    : Office(clock, 1),
      m_network(clock.clock(), {QStringLiteral("--patience"), QStringLiteral("600"),
                                QStringLiteral("--subscriber"), QStringLiteral("112233:112233 |ЗАРЯ:"),
                                QStringLiteral("--subscriber"), QStringLiteral("223344:223344 |ВЕГА:"),
                                QStringLiteral("--subscriber"), QStringLiteral("334455:334455 |МАЯК:")})
{
    station.callTo(m_network.port);
    station.set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
}

void SwitchedOffice::giveOutgoing(int number, const QString &mark)
{
    queue(QStringLiteral("%1u%2").arg(day()).arg(number, 3, 10, QLatin1Char('0')), telegram(textOf(mark)),
          QByteArray(number % 2 == 0 ? "112233" : "223344") + "|S|01.01.2020 00:00|u|5|N|");
}

/// What has become of the last call that the network was told to make.
SwitchedOffice::Call SwitchedOffice::lastCall() const
{
    if (m_calls == 0)
        return Over;
    if (m_network.count(Calls) < m_calls)
        return Under;
    const QStringList since = m_network.lines.mid(m_network.lines.lastIndexOf(Calls));
    if (!since.filter(QStringLiteral("down: 334455")).isEmpty())
        return Over;
    // The workstation may have hung up once more behind its own call before it heard of this one.
    const bool answered = since.contains(QStringLiteral("up: from 334455"));
    return !answered && since.contains(QStringLiteral("hang-up:")) ? Missed : Under;
}

void SwitchedOffice::tend()
{
    const Call last = lastCall();
    if (last == Under || (last == Over && m_waiting.isEmpty()))
        return;
    if (last == Over)
        m_network.command(QStringLiteral("telegram-text 001\\r\\n") +
                          onOneLine(textOf(m_waiting.takeFirst())));
    m_network.command(QStringLiteral("call 334455"));
    ++m_calls;
}

bool SwitchedOffice::isOver() const
{
    return m_waiting.isEmpty() && lastCall() == Over && Office::isOver() &&
           logOfDay(QStringLiteral("up: to ")).size() + logOfDay(QStringLiteral("up: from ")).size() ==
               logOfDay(QStringLiteral("down: ")).size();
}

int SwitchedOffice::arrived(const QString &mark) const
{
    return logOfDay(QStringLiteral("got: ")).filter(onOneLine(textOf(mark))).size();
}
