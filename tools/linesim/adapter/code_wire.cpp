#include "tools/linesim/adapter/code_wire.h"

#include <algorithm>

namespace
{
constexpr qint64 BurstPauseUs = 500'000;
} // namespace

CodeWire::CodeWire(int baud) : m_characterUs(characterUs(baud)) {}

void CodeWire::put(const WireItem &item, qint64 nowUs)
{
    m_waiting.append({item, nowUs});
}

int CodeWire::codesWaiting() const
{
    return int(std::count_if(m_waiting.cbegin(), m_waiting.cend(),
                             [](const Waiting &waiting) { return waiting.item.code >= 0; }));
}

qint64 CodeWire::nextUs() const
{
    if (m_waiting.isEmpty())
        return -1;
    const Waiting &next = m_waiting.first();
    return qMax(m_freeUs, next.putUs) + (next.item.code >= 0 ? m_characterUs : 0);
}

QVector<WireItem> CodeWire::take(qint64 nowUs)
{
    QVector<WireItem> arrived;
    while (!m_waiting.isEmpty() && nextUs() <= nowUs) {
        const qint64 moment = nextUs();
        if (m_waiting.first().item.code >= 0) {
            count(moment - m_characterUs, moment);
            m_freeUs = moment;
        }
        arrived.append(m_waiting.takeFirst().item);
    }
    return arrived;
}

void CodeWire::count(qint64 beginUs, qint64 endUs)
{
    ++codesInAll;
    if (m_burst.codes > 0 && beginUs - m_burst.endUs >= BurstPauseUs) {
        m_ended.append(m_burst);
        m_burst = Burst();
    }
    if (m_burst.codes++ == 0)
        m_burst.beginUs = beginUs;
    else
        longestPauseUs = qMax(longestPauseUs, beginUs - m_burst.endUs);
    m_burst.endUs = endUs;
}

std::optional<CodeWire::Burst> CodeWire::endedBurst(qint64 nowUs)
{
    if (m_ended.isEmpty() && m_burst.codes > 0 && m_waiting.isEmpty() &&
        nowUs - m_burst.endUs >= BurstPauseUs) {
        m_ended.append(m_burst);
        m_burst = Burst();
    }
    if (m_ended.isEmpty())
        return std::nullopt;
    return m_ended.takeFirst();
}
