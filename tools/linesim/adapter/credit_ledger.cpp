#include "tools/linesim/adapter/credit_ledger.h"

#include <QtGlobal>

#include <utility>

namespace
{
constexpr int MostCharacters = 15;
constexpr int CodesPerCharacter = 2;
constexpr qint64 MaybeUnreadUs = 200'000;
constexpr qint64 ForgottenUs = 5'000'000;
} // namespace

void CreditLedger::granted(int characters, qint64 nowUs)
{
    while (!m_unanswered.isEmpty() && nowUs - m_unanswered.first().atUs > ForgottenUs)
        m_unanswered.removeFirst();
    m_unanswered.append({characters, nowUs});
    m_used = false;
}

void CreditLedger::answered(qint64 nowUs)
{
    if (m_unanswered.isEmpty() && m_maybeUnread == 0)
        return;
    m_allowed = std::exchange(m_maybeUnread, 0);
    for (const Grant &grant : qAsConst(m_unanswered)) {
        m_allowed = qMax(m_allowed, grant.characters);
        if (m_unanswered.size() > 1 && nowUs - grant.atUs <= MaybeUnreadUs)
            m_maybeUnread = qMax(m_maybeUnread, grant.characters);
    }
    m_unanswered.clear();
}

bool CreditLedger::take()
{
    m_used = true;
    if (m_allowed == 0)
        return false;
    --m_allowed;
    return true;
}

qint64 CreditLedger::unansweredUs(qint64 nowUs) const
{
    return m_unanswered.isEmpty() ? 0 : nowUs - m_unanswered.first().atUs;
}

int CreditLedger::outstanding() const
{
    int most = m_allowed + m_maybeUnread;
    for (const Grant &grant : m_unanswered)
        most += grant.characters;
    return most;
}

int CreditLedger::grantFor(int room, int waitingCodes, int outstanding)
{
    // A program at rest holds one grant while it is given the next: a quarter of the room each, in codes a
    // half.
    const int most = qMin(MostCharacters, room / (2 * CodesPerCharacter));
    const int free = (room - waitingCodes) / CodesPerCharacter - outstanding;
    return qBound(0, free, most);
}
