#include "number_row.h"

#include "day_report.h"
#include "text/utils.h"

#include <algorithm>

namespace
{
constexpr int Modulus = 1000;
constexpr int HalfRow = Modulus / 2; // a leap of more is one backwards
} // namespace

void CNumberRow::give(const CPlace &place, int number, const QString &name)
{
    m_steps.append({place, Step::Given, number, name});
}

void CNumberRow::giveUnknown(const CPlace &place)
{
    m_steps.append({place, Step::Unknown, 0, QString()});
}

void CNumberRow::set(const CPlace &place, int next)
{
    m_steps.append({place, Step::Set, next, QString()});
}

bool CNumberRow::isExcused(int from, int to) const
{
    for (int number = from; number != to; number = (number + 1) % Modulus)
        if (!m_excused.contains(number))
            return false;
    return true;
}

void CNumberRow::check(CDayReport &report)
{
    std::stable_sort(m_steps.begin(), m_steps.end(),
                     [](const Step &a, const Step &b) { return a.place < b.place; });
    for (const Step &step : qAsConst(m_steps)) {
        switch (step.kind) {
        case Step::Given: checkGiven(step, report); break;
        case Step::Unknown: ++m_slack; break;
        case Step::Set:
            m_next = step.number;
            m_slack = 0;
            break;
        }
    }
}

void CNumberRow::checkGiven(const Step &step, CDayReport &report)
{
    const int ahead = (step.number - m_next + Modulus) % Modulus;
    if (ahead >= HalfRow)
        report.disagree(step.place.shown(), QStringLiteral("номер %1 дан второй раз или не по порядку: %2")
                                                .arg(shownNumber(step.number), step.name));
    else if (ahead > m_slack && !isExcused((m_next + m_slack) % Modulus, step.number))
        report.disagree(
            step.place.shown(),
            ahead - m_slack == 1
                ? QStringLiteral("пропущен номер %1 перед %2").arg(shownNumber(m_next + m_slack), step.name)
                : QStringLiteral("пропущены номера %1–%2 перед %3")
                      .arg(shownNumber(m_next + m_slack), shownNumber(step.number - 1), step.name));
    if (m_first < 0)
        m_first = step.number;
    m_last = step.number;
    if (ahead >= HalfRow)
        return; // the row goes on behind the number that was reached
    m_next = (step.number + 1) % Modulus;
    m_slack = 0;
}

int CNumberRow::counterAt(const CPlace &place) const
{
    int counter = 0;
    for (const Step &step : m_steps) {
        if (place < step.place)
            break;
        if (step.kind == Step::Given)
            counter = step.number;
        else if (step.kind == Step::Set)
            counter = (step.number + Modulus - 1) % Modulus;
    }
    return counter;
}

QString shownNumber(int number)
{
    return CUtils::StringNNN(number);
}
