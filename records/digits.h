#pragma once

#include <QString>

/// The number that \a count ASCII digits from place \a from of \a text make; -1 if anything else stands
/// there. The places must exist.
[[nodiscard]] inline int digitsAt(const QString &text, int from, int count)
{
    int value = 0;
    for (int place = from; place < from + count; ++place) {
        const int digit = text.at(place).unicode() - '0';
        if (digit < 0 || digit > 9)
            return -1;
        value = value * 10 + digit;
    }
    return value;
}
