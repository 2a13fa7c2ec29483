#pragma once

#include "tests/cuts/cut_day.h"

/// A switched network: files to two subscribers and calls from a third, each with a telegram of its own. Who
/// has no answerback behind his telegram calls again, the workstation and the caller alike: a telegram may
/// be there more than once, but only behind a call that the cut has ended, and as a call of its own in the
/// books.
class SwitchedCuts : public CutDay
{
public:
    explicit SwitchedCuts(const QString &role);

    void tend(bool busy) override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] QStringList wrongBooks() const override;
    [[nodiscard]] QString figures() const override;

private:
    [[nodiscard]] int arrived(int number) const; ///< how often, whole
    /// What the far end noted from where it was given the caller's telegram \a number until the next one.
    [[nodiscard]] QStringList notedOf(int number) const;
    /// The call of the last telegram may be made, once more or at first.
    [[nodiscard]] bool mayCall() const;
    [[nodiscard]] QStringList wrongOutgoing() const;
    [[nodiscard]] QStringList wrongIncoming() const;
    void giveOutgoing();
    void giveIncoming();

    QStringList m_outgoing;    // names
    QVector<int> m_begins;     // of the caller's telegrams in the far end's log
    int m_callsOfTelegram = 0; // that the far end was told to make with the last of them
    QElapsedTimer m_sinceCall;
};
