#pragma once

#include <QString>
#include <QVector>

#include <optional>

/// One thing on its way over a line: a code, or what the adapters tell each other beside the codes.
struct WireItem {
    int code = -1;   ///< 0 to 31; -1 for a command
    QString command; ///< "@C"
};

/// One direction of a telegraph line: what is put in comes out in order, a code one character time after it
/// has begun, each beginning as the one before ends. Moments are microseconds of the owner's clock; how often
/// it asks does not matter.
class CodeWire
{
public:
    /// Codes without a long pause between them.
    struct Burst {
        int codes = 0;
        qint64 beginUs = 0;
        qint64 endUs = 0;
    };

    explicit CodeWire(int baud); ///< above 0

    /// One start unit, five of the code, one and a half of stop.
    [[nodiscard]] static qint64 characterUs(int baud) { return qint64(7'500'000) / baud; }

    void put(const WireItem &item, qint64 nowUs);       ///< behind all that waits
    [[nodiscard]] QVector<WireItem> take(qint64 nowUs); ///< what has arrived by now
    void clear() { m_waiting.clear(); }                 ///< what has not arrived is lost

    [[nodiscard]] int codesWaiting() const; ///< the one under way too
    [[nodiscard]] bool isEmpty() const { return m_waiting.isEmpty(); }
    [[nodiscard]] qint64 nextUs() const;                         ///< when the next item arrives; -1 with none
    [[nodiscard]] std::optional<Burst> endedBurst(qint64 nowUs); ///< tells each once

    qint64 codesInAll = 0;
    qint64 longestPauseUs = 0; ///< within a burst

private:
    struct Waiting {
        WireItem item;
        qint64 putUs = 0;
    };

    void count(qint64 beginUs, qint64 endUs);

    qint64 m_characterUs;
    QVector<Waiting> m_waiting;
    QVector<Burst> m_ended;
    Burst m_burst;
    qint64 m_freeUs = 0; // when the last code was over
};
