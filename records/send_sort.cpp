// The sending order. Only the first row of the queue is ever offered to the line, so this order decides
// what goes next.

#include "app/options.h"
#include "records/send_model.h"

#include <QVector>

#include <limits>

namespace
{
/// What the order looks at, taken once per row: a sort compares each row with each.
struct Key {
    bool toCentre; ///< no subscriber number
    bool bad;
    bool spent; ///< no tries left
    qint64 time;
};

enum Verdict { Keep, Take, TakeAtOnce };

Key keyOf(const CTableViewModelItem_Send &row)
{
    const qint64 earliest = std::numeric_limits<qint64>::min(); // an unreadable time holds nothing up
    return {row.number.isEmpty(), row.bad, row.trys == 0,
            row.sendTime.isValid() ? row.sendTime.toMSecsSinceEpoch() : earliest};
}

Verdict compareCKS(const Key &candidate, const Key &row)
{
    if (!candidate.toCentre)
        return row.toCentre ? Take : Keep;
    // One to the centre that has failed gives way to one to a subscriber, too: neither goes out while it
    // stands first.
    return candidate.bad && !row.bad ? Take : Keep;
}

Verdict compareSKK(const Key &candidate, const Key &row)
{
    if (candidate.toCentre != row.toCentre)
        return candidate.toCentre ? Take : Keep;
    if (candidate.spent && !row.spent)
        return TakeAtOnce;
    return row.time < candidate.time ? Take : Keep;
}

Verdict compare(const Key &candidate, const Key &row)
{
    switch (Options.processMode) {
    case CKS: return compareCKS(candidate, row);
    case SKK: return compareSKK(candidate, row);
    }
    return row.time < candidate.time ? Take : Keep;
}

int candidateFrom(const QVector<Key> &keys, int first)
{
    int candidate = first;
    for (int row = first + 1; row < keys.size(); ++row) {
        const Verdict verdict = compare(keys.at(candidate), keys.at(row));
        if (verdict != Keep)
            candidate = row;
        if (verdict == TakeAtOnce)
            break;
    }
    return candidate;
}
} // namespace

void CTableViewModel_Send::sortValues()
{
    QVector<Key> keys;
    keys.reserve(m_rows.size());
    for (const CTableViewModelItem_Send &row : qAsConst(m_rows))
        keys << keyOf(row);
    for (int place = 0; place < keys.size(); ++place) {
        const int candidate = candidateFrom(keys, place);
        if (candidate == place)
            continue;
        keys.move(candidate, place);
        moveUp(candidate, place);
    }
}

void CTableViewModel_Send::moveUp(int from, int to)
{
    beginMoveRows({}, from, from, {}, to);
    m_rows.move(from, to);
    m_rowsByName.clear();
    endMoveRows();
}
