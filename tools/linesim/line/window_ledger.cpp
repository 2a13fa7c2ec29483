#include "tools/linesim/line/window_ledger.h"

#include <QtGlobal>

void WindowLedger::granted(int characters)
{
    budget += characters;
    m_lastGrant = characters;
    m_afterFence += characters;
    m_flowLimit = -1; // the piece may come before or after this window: no longer told apart
}

void WindowLedger::limited(int characters)
{
    m_flowLimit = characters;
}

void WindowLedger::fenceSent()
{
    m_beforeFence = m_lastGrant;
    m_afterFence = 0;
}

void WindowLedger::fenceAnswered()
{
    enforced = !m_suspended;
    budget = qMin(budget, m_beforeFence + m_afterFence);
    if (m_flowLimit >= 0)
        budget = qMin(budget, m_flowLimit);
    m_flowLimit = -1;
}

QString WindowLedger::take(int characters, bool isCommand)
{
    const int granted = budget;
    budget = qMax(0, budget - characters);
    m_flowLimit = -1;
    if (!enforced || characters <= granted)
        return QString();
    if (granted == 0)
        return QStringLiteral("%1 characters without a window").arg(characters);
    if (isCommand)
        return QString();
    return QStringLiteral("%1 characters where %2 were granted").arg(characters).arg(granted);
}

void WindowLedger::suspend()
{
    m_suspended = true;
    enforced = false;
}
