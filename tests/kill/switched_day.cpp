#include "tests/kill/switched_day.h"

namespace
{
constexpr int Calls = 2;
constexpr int Speed = 20;
constexpr int CallSeconds = 160; ///< that a call takes at most
const QString Incoming = QStringLiteral("ВХОДЯЩАЯ ПО ВЫЗОВУ=");
const QString Caller = QStringLiteral("334455");
} // namespace

SwitchedDay::SwitchedDay()
    : Day(QStringLiteral("2026-07-31 12:00:00"), Speed),
      m_network(clock(), {QStringLiteral("--subscriber"), QStringLiteral("112233:112233 |ЗАРЯ:"),
                          QStringLiteral("--subscriber"), QStringLiteral("223344:223344 |ВЕГА:"),
                          QStringLiteral("--subscriber"), QStringLiteral("334455:334455 |МАЯК:"),
                          QStringLiteral("--telegram"),
                          QStringLiteral("ЗЦЗЦ 001\\r\\n") + Incoming + QStringLiteral("\\r\\nНННН  \\r\\n")})
{
    station.callTo(m_network.port);
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
    station.set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
    const QStringList numbers = {QStringLiteral("112233"), QStringLiteral("223344")};
    for (int i = 1; i <= numbers.size(); ++i) {
        const QString words = QStringLiteral("ИСХОДЯЩАЯ %1=").arg(i);
        queue({QStringLiteral("20260731u00%1").arg(i), telegram(words + QStringLiteral("\r\n")), words},
              numbers.at(i - 1).toUtf8() + "|S|01.01.2020 00:00|u|5|N|");
    }
}

int SwitchedDay::callsDone() const
{
    return m_network.count(QStringLiteral("down: %1 by the network").arg(Caller));
}

int SwitchedDay::callsEnded() const
{
    return m_network.count(QStringLiteral("down: ") + Caller);
}

void SwitchedDay::tend()
{
    const bool free = m_calls == callsEnded() || m_sinceCall.elapsed() > passing(CallSeconds);
    if (!Day::isOver() || !station.isRunning() || !free || callsDone() == Calls ||
        (m_sinceCall.isValid() && m_sinceCall.elapsed() < passing(CallSeconds / 4)))
        return;
    m_network.command(QStringLiteral("call ") + Caller);
    m_calls = callsEnded() + 1;
    ++m_placed;
    m_sinceCall.start();
}

bool SwitchedDay::isOver() const
{
    return Day::isOver() && callsDone() == Calls;
}

QString SwitchedDay::progress() const
{
    return m_network.lines.join(QLatin1Char('\n')) + QLatin1Char('\n') + Day::progress();
}

int SwitchedDay::arrived(const Outgoing &telegram) const
{
    int times = 0;
    for (const QString &line : m_network.lines.filter(QStringLiteral("got: ")).filter(telegram.mark))
        times += line.count(QStringLiteral("НННН"));
    return times;
}

QString SwitchedDay::sentName(const Outgoing &telegram) const
{
    return telegram.name + QStringLiteral("\\.\\d{3}");
}

/// A caller whose connection broke has called again, with the telegram.
QStringList SwitchedDay::wrongReceipts() const
{
    QStringList wrong = m_network.violations();
    const int stored = storedWith(Incoming).filter(QStringLiteral("_")).size();
    if (stored > m_placed || stored + toldUnstored() < Calls)
        wrong << QStringLiteral("%1 telegrams stored of %2 calls").arg(stored).arg(m_placed);
    return wrong;
}
