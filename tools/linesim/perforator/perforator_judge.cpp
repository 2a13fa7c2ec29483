#include "tools/linesim/perforator/perforator_judge.h"

namespace
{
QString hex(int byte)
{
    return QStringLiteral("0x%1").arg(byte, 2, 16, QLatin1Char('0'));
}
} // namespace

PerforatorJudge::PerforatorJudge(EventLog &log, int answerMs) : m_log(log), m_answerMs(answerMs) {}

void PerforatorJudge::open()
{
    m_mode = -1;
    m_room = m_told = 0;
    m_waiting = m_overrun = m_garbled = false;
}

void PerforatorJudge::expectMode(const char *instead)
{
    if (m_mode >= 0)
        return;
    m_log.violation(QStringLiteral("%1 ahead of the mode").arg(QLatin1String(instead)));
    m_mode = 0;
}

// A mode byte without a status comes from a workstation that has opened the port anew, too quickly to be
// noticed. It may have found the last status there.
void PerforatorJudge::takeMode(char byte)
{
    const int mode = quint8(byte);
    if (m_waiting && m_mode > 0 && mode != m_mode && !m_garbled)
        m_log.violation(QStringLiteral("mode %1 after %2").arg(hex(mode), hex(m_mode)));
    if (mode != m_mode)
        m_log.event(QStringLiteral("mode"), hex(mode));
    m_mode = mode;
    m_room = m_told;
    m_overrun = m_waiting = false;
}

void PerforatorJudge::takeCode()
{
    expectMode("a code");
    --m_room;
    if (m_room >= -Reserve || m_garbled || m_overrun)
        return;
    m_overrun = true;
    m_log.violation(QStringLiteral("overrun: more codes than room"));
}

void PerforatorJudge::takeCommand()
{
    expectMode("a command");
}

void PerforatorJudge::takeUnknown(char byte)
{
    m_log.violation(QStringLiteral("the byte %1 means nothing").arg(hex(quint8(byte))));
}

void PerforatorJudge::tellRoom(int room)
{
    m_told = room;
    m_waiting = true;
    m_since.start();
}

void PerforatorJudge::tellGarbage()
{
    m_garbled = true;
}

bool PerforatorJudge::mayTell() const
{
    return !m_waiting;
}

void PerforatorJudge::tick()
{
    if (!m_waiting || m_since.elapsed() <= m_answerMs)
        return;
    m_log.violation(QStringLiteral("no mode byte within %1 ms").arg(m_answerMs));
    m_waiting = false; // tell again
}
