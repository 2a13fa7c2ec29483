#pragma once

#include "place.h"

#include <QString>
#include <QVector>

struct CDayReport;

/// The numbers that a direction gave out during a day, in their order, and what moved the counter else.
class CNumberRow
{
public:
    /// \a first is the number that a day begins with: 1 with a centre, 0 on a switched network.
    explicit CNumberRow(int first) : m_next(first) {}

    /// \a number was given at \a place to the file \a name.
    void give(const CPlace &place, int number, const QString &name);
    /// A number may or may not have been spent at \a place, without a trace of which.
    void giveUnknown(const CPlace &place);
    /// The next number is \a next from \a place on: the centre or the operator said so.
    void set(const CPlace &place, int next);
    /// Some telegram of the day bears \a number, nobody knows when it came: it leaves no gap.
    void excuse(int number) { m_excused.append(number); }

    /// Reports gaps, doubles and leaps in the row; to be called once, at the end.
    void check(CDayReport &report);

    // After check()
    [[nodiscard]] int first() const { return m_first; } ///< -1: there is none
    [[nodiscard]] int last() const { return m_last; }
    /// The counter, as its owner would show it, at \a place; the last number given or set before.
    [[nodiscard]] int counterAt(const CPlace &place) const;
    /// How much the counter may be ahead, at the end of the day.
    [[nodiscard]] int slack() const { return m_slack; }

private:
    struct Step {
        enum Kind { Given, Unknown, Set };
        CPlace place;
        Kind kind;
        int number;
        QString name;
    };
    void checkGiven(const Step &step, CDayReport &report);
    [[nodiscard]] bool isExcused(int from, int to) const;

    QVector<Step> m_steps;
    QVector<int> m_excused;
    int m_next;      ///< the number that is due
    int m_slack = 0; ///< how many may have been spent unseen before it
    int m_first = -1;
    int m_last = -1;
};

/// "007".
[[nodiscard]] QString shownNumber(int number);
