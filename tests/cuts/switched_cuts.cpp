#include "tests/cuts/switched_cuts.h"

#include "tests/e2e/books.h"

#include <QRegularExpression>

namespace
{
constexpr int LongestCallMs = 15000; ///< with the pause in front of it; a call that is over sooner tells so
constexpr int Waiting = 1;           ///< files that are not sent yet
const QString Caller = QStringLiteral("334455");
const QString Done = QStringLiteral("down: %1 by the network").arg(Caller);
const QString Down = QStringLiteral("down: %1").arg(Caller);
/// What a workstation does that has no processor while the link is lost and comes back: it hears of both at
/// once, and goes on with a connection that is no more until it has been idle for half a minute.
const QString LateHearing = QStringLiteral("call not accepted|no hang-up|seizure of a busy line");
const QStringList Subscribers = {QStringLiteral("112233"), QStringLiteral("223344")};

QString incomingMark(int number)
{
    return QStringLiteral("ВХОДЯЩАЯ %1=").arg(number, 3, 10, QLatin1Char('0'));
}

QString outgoingMark(int number)
{
    return QStringLiteral("ИСХОДЯЩАЯ %1=").arg(number, 3, 10, QLatin1Char('0'));
}

/// Of some length, so that many cuts are within one.
QString body(const QString &mark)
{
    return mark + QStringLiteral("\r\n") +
           QStringLiteral("СТРОКА ТЕКСТА, КОТОРЫЙ ДОЛЖЕН ПРИЙТИ ЦЕЛЫМ =\r\n").repeated(2);
}

QString escaped(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\\r\\n"));
}
} // namespace

SwitchedCuts::SwitchedCuts(const QString &role)
    : CutDay(role,
             {QStringLiteral("switch"), QStringLiteral("--terminal-ao"), QStringLiteral("654321 ЗНАМЯ"),
              QStringLiteral("--patience"), QStringLiteral("600"), QStringLiteral("--subscriber"),
              QStringLiteral("112233:112233 |ЗАРЯ:"), QStringLiteral("--subscriber"),
              QStringLiteral("223344:223344 |ВЕГА:"), QStringLiteral("--subscriber"),
              QStringLiteral("334455:334455 |МАЯК:")},
             900)
{
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
    station.set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
}

void SwitchedCuts::giveOutgoing()
{
    const int number = m_outgoing.size() + 1;
    m_outgoing << QStringLiteral("20260731u%1").arg(number, 3, 10, QLatin1Char('0'));
    queue(m_outgoing.last(), telegram(body(outgoingMark(number))),
          Subscribers.at(number % 2).toUtf8() + "|S|01.01.2020 00:00|u|99|N|");
}

void SwitchedCuts::giveIncoming()
{
    m_begins << line->log().size();
    m_callsOfTelegram = 0;
    line->command(QStringLiteral("telegram-text 001\\r\\n") + escaped(body(incomingMark(m_begins.size()))));
}

QStringList SwitchedCuts::notedOf(int number) const
{
    const int begin = m_begins.at(number - 1);
    const int end = number < m_begins.size() ? m_begins.at(number) : line->log().size();
    return line->log().mid(begin, end - begin);
}

bool SwitchedCuts::mayCall() const
{
    const int ended = notedOf(m_begins.size()).filter(Down).size();
    return ended == m_callsOfTelegram || m_sinceCall.elapsed() > LongestCallMs;
}

void SwitchedCuts::tend(bool busy)
{
    if (busy &&
        (m_outgoing.size() < Waiting || !sentAs(m_outgoing.at(m_outgoing.size() - Waiting)).isEmpty()))
        giveOutgoing();
    const bool done = m_begins.isEmpty() || !notedOf(m_begins.size()).filter(Done).isEmpty();
    if (done && busy)
        giveIncoming();
    else if (!done && mayCall()) {
        line->command(QStringLiteral("call ") + Caller);
        ++m_callsOfTelegram;
        m_sinceCall.start();
    }
}

bool SwitchedCuts::isOver() const
{
    for (const QString &name : m_outgoing)
        if (sentAs(name).isEmpty())
            return false;
    return queueFiles().isEmpty() && (m_begins.isEmpty() || !notedOf(m_begins.size()).filter(Done).isEmpty());
}

int SwitchedCuts::arrived(int number) const
{
    return line->noted(QStringLiteral("got: "))
        .filter(escaped(body(outgoingMark(number))) + QStringLiteral("\\r\\nНННН"))
        .size();
}

QStringList SwitchedCuts::wrongOutgoing() const
{
    QStringList wrong;
    for (int i = 1; i <= m_outgoing.size(); ++i) {
        const QString &name = m_outgoing.at(i - 1);
        const int tries = station.count(QStringLiteral("Установка соединения для отправки файла ") + name);
        const int told = station.count(QStringLiteral("Файл %1 отправлен").arg(name));
        const QStringList sent = sentAs(name);
        if (arrived(i) < 1 || arrived(i) > tries || told != 1 || sent.size() != 1)
            wrong << QStringLiteral("%1 arrived %2 times in %3 tries, told %4 times, stands as %5")
                         .arg(name)
                         .arg(arrived(i))
                         .arg(tries)
                         .arg(told)
                         .arg(sent.join(QLatin1Char(' ')));
    }
    return wrong;
}

QStringList SwitchedCuts::wrongIncoming() const
{
    QStringList wrong;
    for (int i = 1; i <= m_begins.size(); ++i) {
        const int stored = storedWith(body(incomingMark(i))).size();
        const int done = notedOf(i).filter(Done).size();
        const int brokenOff = notedOf(i).filter(Down).size() - done;
        if (stored < 1 || stored < done || stored > done + brokenOff)
            wrong << QStringLiteral("incoming %1 stored %2 times, in %3 calls and %4 that broke off")
                         .arg(i)
                         .arg(stored)
                         .arg(done)
                         .arg(brokenOff);
        if (storedWith(incomingMark(i)).size() != stored)
            wrong << QStringLiteral("incoming %1 stored in part").arg(i);
    }
    return wrong;
}

QStringList SwitchedCuts::wrongBooks() const
{
    return wrongOutgoing() + wrongIncoming() +
           disagreements(station.path(), QString(),
                         QStringLiteral("\\.dat: запись о файле, которого в очереди нет")) +
           violations().filter(QRegularExpression(QStringLiteral("^(?!.*(%1))").arg(LateHearing)));
}

QString SwitchedCuts::figures() const
{
    int outTwice = 0, inTwice = 0;
    for (int i = 1; i <= m_outgoing.size(); ++i)
        outTwice += arrived(i) - 1;
    for (int i = 1; i <= m_begins.size(); ++i)
        inTwice += storedWith(body(incomingMark(i))).size() - 1;
    return QStringLiteral("%1 telegrams out, %2 in, again in another call %3 and %4")
        .arg(m_outgoing.size())
        .arg(m_begins.size())
        .arg(outTwice)
        .arg(inTwice);
}
