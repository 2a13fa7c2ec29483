#include "tools/linesim/adapter/line_adapter.h"

#include "tools/linesim/adapter/adapter_bytes.h"
#include "tools/linesim/console/event_log.h"

using namespace AdapterBytes;

namespace
{
constexpr qint64 SignalUs = 100'000; // between two bytes of a fault that lasts
constexpr int ToldAgainMs = 10'000;  // at most, to the next status: silence would end the link
constexpr qint64 LongestUs = 50'000; // to the next look at what has no moment of its own
} // namespace

LineAdapter::LineAdapter(const Settings &settings, EventLog &log)
    : m_settings(settings), m_log(log), m_rules(settings.expectedMode, settings.answerMs, log),
      m_out(settings.baud), m_in(settings.baud), m_silent(settings.silent)
{
}

void LineAdapter::opened(qint64 nowUs)
{
    restart();
    m_rules.opened(nowUs);
    m_lastStatusUs = nowUs - m_settings.statusMs * 1000LL; // it talks unasked
}

void LineAdapter::closed(qint64 nowUs)
{
    m_rules.closed(nowUs);
    restart();
}

void LineAdapter::unplugged()
{
    m_rules.lost();
    restart();
}

void LineAdapter::restart()
{
    tellHeard();
    m_credit.restart();
    m_out.clear();
    m_in.clear();
    m_reader.restart();
    m_writer.restart();
    m_number.clear();
    m_inNumber = m_switched = m_toldDrained = false;
    m_quietUs = -1;
    m_overrun = m_lostCodes = 0;
}

void LineAdapter::advance(qint64 nowUs)
{
    transmit(nowUs);
    receive(nowUs);
    tellBursts(nowUs);
    if (m_rules.phase() == ProgramRules::Closed)
        return;
    m_rules.checkAnswer(m_credit.unansweredUs(nowUs), nowUs);
    signalFaults(nowUs);
    if (isStatusDue(nowUs))
        sendStatus(nowUs);
}

qint64 LineAdapter::nextUs(qint64 nowUs) const
{
    if (m_rules.phase() == ProgramRules::Closed)
        return -1;
    qint64 next = nowUs + LongestUs;
    for (const qint64 moment : {m_out.nextUs(), m_in.nextUs(), statusUs(nowUs)})
        if (moment >= 0)
            next = qMin(next, moment);
    if (m_broken || m_noSignal)
        next = qMin(next, m_lastSignalUs + SignalUs);
    if (m_noCreditUntilUs > nowUs)
        next = qMin(next, m_noCreditUntilUs);
    return next;
}

void LineAdapter::put(const QByteArray &bytes, qint64 nowUs)
{
    if (m_silent || bytes.isEmpty() || m_rules.phase() == ProgramRules::Closed)
        return;
    m_rules.spoke(nowUs);
    emit toProgram(bytes);
}

void LineAdapter::transmit(qint64 nowUs)
{
    const QVector<WireItem> items = m_out.take(nowUs);
    QString text;
    QByteArray codes, echo;
    for (const WireItem &item : items) {
        if (item.code < 0) {
            hear(text + m_reader.flush(), codes);
            tellHeard();
            text.clear();
            codes.clear();
            hear(item.command, QByteArray());
            continue;
        }
        text += m_reader.take(quint8(item.code));
        codes += char(item.code);
        if (m_echoesToLose > 0)
            --m_echoesToLose;
        else
            echo += char(Echo | item.code);
    }
    if (echoes())
        put(echo, nowUs);
    if (!items.isEmpty())
        m_quietUs = nowUs;
    hear(text, codes);
    if (m_quietUs >= 0 && m_out.isEmpty() && nowUs - m_quietUs >= m_settings.wordMs * 1000LL) {
        m_quietUs = -1;
        hear(m_reader.flush(), QByteArray());
        tellHeard();
    }
}

void LineAdapter::hear(const QString &text, const QByteArray &codes)
{
    if (text.isEmpty() && codes.isEmpty())
        return;
    m_heard += text;
    m_heardRaw += codes;
    if (text.contains(QLatin1Char('\n')) || text.startsWith(QLatin1Char('@')))
        tellHeard();
    emit heard(text, codes);
}

/// A line, or what came before a pause, as one event.
void LineAdapter::tellHeard()
{
    if (!m_heardRaw.isEmpty())
        m_log.event(QStringLiteral("raw"), QString::fromLatin1(m_heardRaw.toHex()));
    if (!m_heard.isEmpty())
        m_log.event(QStringLiteral("text"),
                    QString::number(m_heard.size()) + QLatin1Char(' ') + escaped(m_heard));
    m_heard.clear();
    m_heardRaw.clear();
}

void LineAdapter::tellBursts(qint64 nowUs)
{
    while (const auto burst = m_out.endedBurst(nowUs))
        m_log.event(QStringLiteral("line"), QStringLiteral("%1 codes in %2 ms")
                                                .arg(burst->codes)
                                                .arg((burst->endUs - burst->beginUs) / 1000));
    while (m_in.endedBurst(nowUs)) { // the far end's share needs no figures
    }
}

void LineAdapter::tellTotals()
{
    tellHeard();
    m_log.event(QStringLiteral("transmitted"), QStringLiteral("%1 codes, longest pause %2 ms")
                                                   .arg(m_out.codesInAll)
                                                   .arg(m_out.longestPauseUs / 1000));
    m_log.event(QStringLiteral("received"), QStringLiteral("%1 codes").arg(m_in.codesInAll));
}

void LineAdapter::sendText(const QString &text, qint64 nowUs)
{
    QString left;
    for (int i = 0; i < text.size(); ++i) {
        const QString command = text.mid(i, 2);
        if (command.size() == 2 && command[0] == QLatin1Char('@') &&
            QStringLiteral("CEHS").contains(command[1])) {
            m_in.put({-1, command}, nowUs);
            ++i;
            continue;
        }
        for (const char code : m_writer.write(text.mid(i, 1), &left))
            m_in.put({code, QString()}, nowUs);
    }
    if (!left.isEmpty())
        m_log.event(QStringLiteral("not carried"), escaped(left));
}

void LineAdapter::receive(qint64 nowUs)
{
    QByteArray bytes;
    for (const WireItem &item : m_in.take(nowUs)) {
        if (item.code >= 0) {
            if (!m_broken && !m_noSignal)
                bytes += char(item.code);
            continue;
        }
        const char letter = item.command.at(1).toLatin1();
        bytes += char(letter == 'C'   ? SayCalled
                      : letter == 'E' ? SayAnswered
                      : letter == 'H' ? SayHangUp
                                      : SaySignal);
    }
    put(bytes, nowUs);
}

int LineAdapter::grant(qint64 nowUs) const
{
    if (nowUs < m_noCreditUntilUs)
        return 0;
    return CreditLedger::grantFor(m_settings.roomCodes, m_out.codesWaiting(), m_credit.outstanding());
}

/// When an unasked status is due; -1 if there is none to come. One at a time, so that both sides know what is
/// granted; a program that does not answer is told again.
qint64 LineAdapter::statusUs(qint64 nowUs) const
{
    if (m_silent || m_noSignal)
        return -1;
    const qint64 period = m_lastStatusUs + m_settings.statusMs * 1000LL;
    if (m_credit.isAnswered())
        return period;
    return qMax(period,
                nowUs - m_credit.unansweredUs(nowUs) + qMin(m_settings.answerMs, ToldAgainMs) * 1000LL);
}

bool LineAdapter::isStatusDue(qint64 nowUs) const
{
    const qint64 moment = statusUs(nowUs);
    if (moment < 0 || (moment > nowUs && !m_credit.isAnswered()))
        return false;
    if (moment <= nowUs || m_out.isEmpty() != m_toldDrained)
        return true;
    const int enough = qBound(1, m_settings.roomCodes / 8, 8);
    return (m_credit.isUsed() || m_lastGrant < enough) && grant(nowUs) >= enough;
}

void LineAdapter::sendStatus(qint64 nowUs)
{
    const int room = grant(nowUs);
    m_toldDrained = m_out.isEmpty();
    m_lastStatusUs = nowUs;
    m_lastGrant = room;
    m_credit.granted(room, nowUs);
    put(QByteArray(1, char(Status | (m_toldDrained ? Drained : 0) | room)), nowUs);
}

void LineAdapter::signalFaults(qint64 nowUs)
{
    if ((!m_broken && !m_noSignal) || nowUs - m_lastSignalUs < SignalUs)
        return;
    m_lastSignalUs = nowUs;
    if (m_broken)
        put(QByteArray(1, char(Break)), nowUs);
    if (m_noSignal)
        put(QByteArray(1, char(NoSignal)), nowUs);
}

/// Past the line; what looks like a status grants what it says.
void LineAdapter::sendRaw(const QByteArray &bytes, qint64 nowUs)
{
    for (const char c : bytes)
        if ((quint8(c) & StatusMask) == Status)
            m_credit.granted(quint8(c) & RoomMask, nowUs);
    put(bytes, nowUs);
}
