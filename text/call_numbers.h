#pragma once

#include <QString>

constexpr int ShortestCallNumber = 6; ///< characters

/// What a field for the numbers of subscribers, parted by ",", makes of what is typed or pasted into it.
struct CallNumbers {
    QString text;          ///< what of it may stay: digits of any script, "+", and a "," behind a number
    int count = 1;         ///< of numbers, with the one that is begun behind the last ","
    bool complete = false; ///< the last one is a number, as those before it are
};

[[nodiscard]] CallNumbers readCallNumbers(const QString &typed);
