#pragma once

#include "tests/e2e/far_end.h"
#include "tests/kill/day.h"

/// The numbered exchange with a centre: its opening, telegrams both ways, one to be confirmed, service
/// messages; or the same around midnight, with the quiet time and the renumbering.
class CentreDay : public Day
{
public:
    explicit CentreDay(bool midnight);

    void tend() override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] QString progress() const override;

protected:
    [[nodiscard]] int arrived(const Outgoing &telegram) const override;
    [[nodiscard]] QStringList wrongReceipts() const override;
    [[nodiscard]] QString sentName(const Outgoing &telegram) const override;

private:
    [[nodiscard]] QStringList violations() const;
    void giveIncoming(bool confirmed = false);
    void giveOutgoing();
    void beginPart();
    [[nodiscard]] bool isLastPart() const;
    [[nodiscard]] bool partIsOver() const;
    [[nodiscard]] bool allIsStored() const;

    FarEnd m_centre;
    bool m_midnight;
    bool m_takenTold = false;
    int m_part = 1;
    int m_incoming = 0;
    QElapsedTimer m_sinceFigures;
};
