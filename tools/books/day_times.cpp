#include "day_times.h"

namespace
{
const QString ModeAutomatic = QStringLiteral("автоматический");
const QString ModeManual = QStringLiteral("ручной");
const QString ModeStopped = QStringLiteral("не работало");
const QString ModeUnknown = QStringLiteral("неизвестно");
const QString FromStart = QStringLiteral("с запуска");
constexpr int UsualStart = 10; ///< seconds from the start to the link, which are no outage

const QTime DayBegin(0, 0);
constexpr int SecondsPerDay = 86400;

int secondOf(const QTime &time)
{
    return DayBegin.secsTo(time);
}

/// What the day was like, event after event. The day before gives the state at its begin.
class CTimes
{
public:
    CTimes(const CDayRecord &record, CDayReport &report) : m_record(record), m_report(report) {}
    void reckon();

private:
    void take(const CJournalEvent &event);
    void takeMode(const QString &mode);
    void setLink(bool up, const QString &why);
    void pass(int second);
    void rest(int from, int to);
    [[nodiscard]] int endOfDay() const;

    const CDayRecord &m_record;
    CDayReport &m_report;
    bool m_counts = false; ///< the day itself has begun
    int m_now = 0;         ///< seconds of the day that have passed
    QString m_mode = ModeUnknown;
    QString m_channel;     ///< empty: unknown
    bool m_isDown = false; ///< the link
    int m_downFrom = 0;
    QString m_why;
};

/// The mode and the channel had their states for the seconds up to \a second.
void CTimes::pass(int second)
{
    if (!m_counts || second <= m_now)
        return;
    m_report.modeSeconds[m_mode] += second - m_now;
    if (m_mode == ModeStopped)
        rest(m_now, second);
    if (!m_channel.isEmpty())
        m_report.channelSeconds[m_channel] += second - m_now;
    m_now = second;
}

void CTimes::rest(int from, int to)
{
    m_report.rests.append(
        {DayBegin.addSecs(from), to == SecondsPerDay ? QTime() : DayBegin.addSecs(to), ModeStopped});
}

void CTimes::setLink(bool up, const QString &why)
{
    if (up == !m_isDown)
        return;
    m_isDown = !up;
    if (m_isDown) {
        m_downFrom = m_now;
        m_why = why;
    } else if (m_counts && (m_why != FromStart || m_now - m_downFrom > UsualStart)) {
        m_report.outages.append({DayBegin.addSecs(m_downFrom), DayBegin.addSecs(m_now), m_why});
    }
}

/// Before the first change of the mode it was the other one.
void CTimes::takeMode(const QString &mode)
{
    const QString other = mode == ModeManual ? ModeAutomatic : ModeManual;
    if (m_mode == ModeUnknown && m_report.modeSeconds.contains(ModeUnknown))
        m_report.modeSeconds[other] += m_report.modeSeconds.take(ModeUnknown);
    m_mode = mode;
}

void CTimes::take(const CJournalEvent &event)
{
    pass(secondOf(event.time));
    switch (event.kind) {
    case CJournalEvent::Started:
        m_mode = ModeUnknown;
        m_isDown = false;
        setLink(false, FromStart);
        break;
    case CJournalEvent::Ended:
        m_mode = ModeStopped;
        m_channel.clear();
        setLink(true, QString());
        break;
    case CJournalEvent::Manual: takeMode(ModeManual); break;
    case CJournalEvent::Automatic: takeMode(ModeAutomatic); break;
    case CJournalEvent::ChannelMode: m_channel = event.name; break;
    case CJournalEvent::LinkUp: setLink(true, QString()); break;
    case CJournalEvent::LinkDown: setLink(false, event.name); break;
    default: break; // nothing that lasts
    }
}

int CTimes::endOfDay() const
{
    if (!m_record.counters)
        return SecondsPerDay;
    int last = m_now; // the day of the counters is the one that is not over
    for (const CJournalLine &line : m_record.journal.lines)
        if (line.isService())
            last = qMax(last, secondOf(line.time()));
    return last;
}

void CTimes::reckon()
{
    bool hadNone = true;
    for (const CJournalEvent &event : m_record.events) {
        if (event.place.date > m_record.date)
            break;
        if (event.place.date == m_record.date && !m_counts) {
            m_counts = true;
            m_now = 0;
            m_downFrom = 0;
            if (hadNone && event.kind == CJournalEvent::Started)
                m_mode = ModeStopped; // nothing was at work before
        }
        hadNone = false;
        take(event);
    }
    if (!m_counts)
        return;
    const int end = endOfDay();
    pass(end);
    if (end < SecondsPerDay)
        rest(end, SecondsPerDay); // what is still to come
    if (m_isDown)
        m_report.outages.append(
            {DayBegin.addSecs(m_downFrom), end == SecondsPerDay ? QTime() : DayBegin.addSecs(end), m_why});
}
} // namespace

void reckonTimes(const CDayRecord &record, CDayReport &report)
{
    CTimes(record, report).reckon();
}
