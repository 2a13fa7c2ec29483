#include "tools/linesim/adapter/program_rules.h"

#include "tools/linesim/adapter/adapter_bytes.h"
#include "tools/linesim/console/event_log.h"

#include <utility>

using namespace AdapterBytes;

namespace
{
// A program that hears nothing for long gives the adapter up without a goodbye.
constexpr qint64 GivenUpUs = 25'000'000;
constexpr qint64 GivenUpAtStartUs = 4'000'000;
constexpr qint64 SettledUs = 12'000'000; // the longest way from the mode to the first answer

QString inHex(quint8 byte)
{
    return QString::number(byte, 16);
}

QString toldMode(quint8 mode)
{
    const char *const name = mode == Speed50    ? "50 baud"
                             : mode == Speed100 ? "100 baud"
                             : mode == Speed200 ? "200 baud"
                             : mode == Switched ? "switched"
                                                : "no speed";
    return inHex(mode) + QLatin1Char(' ') + QLatin1String(name);
}
} // namespace

ProgramRules::ProgramRules(int expectedMode, int answerMs, EventLog &log)
    : m_log(log), m_expectedMode(expectedMode), m_answerUs(answerMs * 1000LL)
{
}

quint8 ProgramRules::modeOf(int baud)
{
    return baud == 50 ? Speed50 : baud == 100 ? Speed100 : baud == 200 ? Speed200 : 0;
}

bool ProgramRules::isMode(quint8 byte)
{
    return (byte >= NoSpeed && byte <= Speed200) || byte == Switched;
}

void ProgramRules::opened(qint64 nowUs)
{
    m_phase = Opened;
    m_mode = 0;
    m_goodbye = m_talkedOn = m_blamed = false;
    m_openedUs = nowUs;
    m_spokeUs = -1;
    m_longestSilenceUs = 0;
}

void ProgramRules::spoke(qint64 nowUs)
{
    m_longestSilenceUs = qMax(m_longestSilenceUs, m_spokeUs < 0 ? 0 : nowUs - m_spokeUs);
    if (m_spokeUs < 0 && nowUs - m_openedUs > GivenUpAtStartUs)
        m_longestSilenceUs = GivenUpUs; // as good as that
    m_spokeUs = nowUs;
}

bool ProgramRules::wasSilent(qint64 nowUs) const
{
    if (m_spokeUs < 0)
        return nowUs - m_openedUs > GivenUpAtStartUs;
    return qMax(m_longestSilenceUs, nowUs - m_spokeUs) >= GivenUpUs;
}

void ProgramRules::closed(qint64 nowUs)
{
    if (m_goodbye || m_killAllowed)
        m_versionDue = true; // a program that is told to connect anew, or another one, asks again
    else if (!wasSilent(nowUs))
        m_log.violation(QStringLiteral("closed without a goodbye"));
    m_phase = Closed;
}

void ProgramRules::lost()
{
    m_phase = Closed;
}

void ProgramRules::tookByte()
{
    if (m_goodbye && !std::exchange(m_talkedOn, true))
        m_log.violation(QStringLiteral("goodbye without a close"));
}

void ProgramRules::tookMode(quint8 mode)
{
    m_blamed = false;
    if (mode != m_mode) {
        m_mode = mode;
        m_log.event(QStringLiteral("mode"), toldMode(mode));
        if (m_expectedMode != AnyMode && mode != m_expectedMode)
            m_log.violation(QStringLiteral("mode %1 instead of %2")
                                .arg(toldMode(mode), toldMode(quint8(m_expectedMode))));
    }
    if (m_phase == Opened) {
        m_phase = Settling;
    } else if (m_phase == Settling) {
        m_phase = Talking;
        m_versionDue = false;
    }
}

void ProgramRules::tookVersionRequest()
{
    m_log.event(QStringLiteral("version"), QStringLiteral("asked"));
    if (m_phase != Settling || !m_versionDue)
        m_log.violation(QStringLiteral("version asked when it was not due"));
    m_versionDue = false;
}

void ProgramRules::checkAnswer(qint64 waitedUs, qint64 nowUs)
{
    // A program that settles reads statuses without an answer, but not for ever.
    const qint64 limit = m_phase == Settling ? qMax(SettledUs, m_answerUs) : m_answerUs;
    const qint64 waited = m_phase == Settling ? nowUs - m_openedUs : waitedUs;
    if (m_phase == Closed || m_blamed || waited <= limit)
        return;
    m_blamed = true;
    m_log.violation(QStringLiteral("status not answered in %1 ms").arg(limit / 1000));
}
