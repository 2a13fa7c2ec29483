#include "tools/linesim/record/record_player.h"

#include <algorithm>

RecordPlayer::RecordPlayer(const LineRecord &record, const Settings &settings) : m_settings(settings)
{
    for (LineRecord::Event event : record.events) {
        if (event.kind == LineRecord::Open)
            m_speech.append(QByteArray());
        if (event.side == LineRecord::Workstation) {
            event.bytes = compared(event.bytes);
            m_speech.last() += event.bytes;
        }
        m_steps.append({event, m_speech.last().size()});
    }
}

void RecordPlayer::opened()
{
    m_isOpen = true;
    m_said = 0;
    if (++m_connection > m_speech.size())
        return finish(QStringLiteral("%1: a connection that the record has not").arg(place()));
    go();
}

void RecordPlayer::closed()
{
    if (!m_isOpen || m_ended)
        return;
    m_isOpen = false;
    if (m_said < m_speech[m_connection - 1].size())
        return finish(QStringLiteral("%1: the workstation hung up").arg(place()));
    go();
}

void RecordPlayer::take(const QByteArray &bytes)
{
    if (m_ended || !m_isOpen)
        return;
    const QByteArray &recorded = m_speech[m_connection - 1];
    for (const char byte : compared(bytes)) {
        const QString said = QString::fromLatin1(QByteArray(1, byte).toHex().toUpper());
        if (m_said >= recorded.size())
            return finish(QStringLiteral("%1: the workstation's byte %2 is %3, and the record has no more")
                              .arg(place())
                              .arg(m_said + 1)
                              .arg(said));
        if (recorded[m_said] != byte)
            return finish(QStringLiteral("%1: the workstation's byte %2 is %3, in the record %4")
                              .arg(place())
                              .arg(m_said + 1)
                              .arg(said, QString::fromLatin1(recorded.mid(m_said, 1).toHex().toUpper())));
        ++m_said;
    }
    go();
}

void RecordPlayer::tick(qint64 us)
{
    m_nowUs = us;
    go();
    if (m_ended || m_at >= m_steps.size())
        return;
    const Step &step = m_steps[m_at];
    const bool waits = step.event.side == LineRecord::Workstation || m_called;
    if (waits && m_nowUs > dueUs() + m_settings.patienceMs * 1000)
        finish(QStringLiteral("%1: the workstation %2")
                   .arg(place(), step.event.kind == LineRecord::Open    ? QStringLiteral("does not connect")
                                 : step.event.kind == LineRecord::Close ? QStringLiteral("does not hang up")
                                                                        : QStringLiteral("is silent")));
}

/// Does all steps that can be done now.
void RecordPlayer::go()
{
    while (!m_ended && m_at < m_steps.size()) {
        const Step &step = m_steps[m_at];
        const bool plays = step.event.side == LineRecord::FarEnd && !m_called;
        if (plays && m_nowUs < dueUs())
            return;
        if (plays)
            play(step);
        if (m_ended || !isDone(step))
            return;
        m_called = false;
        m_doneUs = m_nowUs;
        ++m_at;
    }
    if (!m_ended)
        finish(QString());
}

void RecordPlayer::play(const Step &step)
{
    switch (step.event.kind) {
    case LineRecord::Open: m_called = true; return emit open();
    case LineRecord::Bytes: return speak(step.event);
    case LineRecord::Close: m_isOpen = false; return emit close();
    }
}

void RecordPlayer::speak(const LineRecord::Event &event)
{
    if (m_isOpen && m_connection == event.connection)
        return emit write(event.bytes);
    if (!compared(event.bytes).isEmpty())
        finish(QStringLiteral("%1: the workstation hung up").arg(place()));
}

/// What the far end does is done when it is played; a call when it is answered.
bool RecordPlayer::isDone(const Step &step) const
{
    const int connection = step.event.connection;
    switch (step.event.kind) {
    case LineRecord::Open: return m_connection >= connection;
    case LineRecord::Close: return m_connection > connection || !m_isOpen;
    case LineRecord::Bytes: break;
    }
    return step.event.side == LineRecord::FarEnd || (m_connection == connection && m_said >= step.said);
}

qint64 RecordPlayer::dueUs() const
{
    const qint64 before = m_at > 0 ? m_steps[m_at - 1].event.us : 0;
    const qint64 gap = m_steps[m_at].event.us - before;
    return m_doneUs + (m_settings.speed > 0 ? qint64(double(gap) / m_settings.speed) : 0);
}

void RecordPlayer::finish(const QString &difference)
{
    if (m_ended)
        return;
    m_ended = true;
    emit ended(difference);
}

QByteArray RecordPlayer::compared(const QByteArray &bytes) const
{
    QByteArray result = bytes;
    const auto left = std::remove_if(result.begin(), result.end(),
                                     [this](char byte) { return m_settings.ignored.contains(byte); });
    result.truncate(int(left - result.begin()));
    return result;
}

/// Where in the record the next step is.
QString RecordPlayer::place() const
{
    const LineRecord::Event &event = m_steps[std::min(m_at, m_steps.size() - 1)].event;
    return QStringLiteral("%1, connection %2").arg(secondsOf(event.us)).arg(event.connection);
}
