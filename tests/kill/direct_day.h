#pragma once

#include "tests/e2e/far_end.h"
#include "tests/kill/day.h"

/// A direct link to an office that sends a telegram once more which was not confirmed before the line was
/// lost.
class DirectDay : public Day
{
public:
    DirectDay();

    void tend() override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] QString progress() const override;

protected:
    [[nodiscard]] int arrived(const Outgoing &telegram) const override;
    [[nodiscard]] QStringList wrongReceipts() const override;

private:
    [[nodiscard]] QStringList noted() const;
    [[nodiscard]] int givenInAll() const;

    FarEnd m_office;
    QStringList m_incoming;
    int m_confirmed = 0;  // of them
    QVector<int> m_given; // how often each was given to the line
    QElapsedTimer m_sinceConfirmed;
};
