#pragma once

#include <QString>

/// How long a telegraph line is busy with a text. Any thread.

/// Seconds that \a characters take at \a baud, begun ones counted whole: a character is 7.5 units, start and
/// stop included. A speed that no line has counts as the slowest, 50.
[[nodiscard]] qint64 lineSeconds(qint64 characters, int baud);
/// \a seconds for an operator, begun minutes counted whole: "1 мин", "2 ч 05 мин".
[[nodiscard]] QString durationInWords(qint64 seconds);
