#pragma once

#include <QVector>

/// What an adapter has granted the program by its statuses, and what the program may still send. The program
/// answers what it has read of them with a mode byte and may then send one piece of text, so what comes
/// behind an answer comes by a status in front of it.
class CreditLedger
{
public:
    void restart() { *this = CreditLedger(); }
    void granted(int characters, qint64 nowUs); ///< a status with that room went to the program
    /// The program has answered. Of several statuses it may not have read the latest.
    void answered(qint64 nowUs);
    /// One character has come, register codes aside; false if it was not granted.
    [[nodiscard]] bool take();

    [[nodiscard]] bool isAnswered() const { return m_unanswered.isEmpty(); }
    [[nodiscard]] qint64 unansweredUs(qint64 nowUs) const; ///< how long the oldest has waited; 0 if none does
    /// Characters that may come before the program reads another status.
    [[nodiscard]] int outstanding() const;
    [[nodiscard]] bool isUsed() const { return m_used; } ///< text has come since the last status

    /// The most that fits: a character may cost two codes, and what is outstanding comes first.
    [[nodiscard]] static int grantFor(int room, int waitingCodes, int outstanding);

private:
    struct Grant {
        int characters = 0;
        qint64 atUs = 0;
    };

    QVector<Grant> m_unanswered;
    int m_maybeUnread = 0; // granted just before an answer to several statuses
    int m_allowed = 0;
    bool m_used = false;
};
