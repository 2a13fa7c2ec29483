#pragma once

#include <QString>

constexpr int TelegramIndexLength = 6;        ///< of an ordinary index
constexpr int LongestTelegramIndexLength = 7; ///< of one in two halves, "000=000"

/// What the operator is told of an \a index with which no telegram of \a category can go through a centre;
/// empty if it can.
[[nodiscard]] QString telegramIndexFault(const QString &category, const QString &index);

/// Whether \a index can stand as it is, which the field's colour tells while it is written: six characters,
/// or with a "Ц" anywhere in \a category six digits or three digits, "=" and the same three again.
[[nodiscard]] bool telegramIndexIsComplete(const QString &category, const QString &index);
