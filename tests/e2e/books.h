#pragma once

#include <QStringList>

/// The disagreements that velda-books finds in \a directory, of \a days as it takes them, all of them if that
/// is empty; but for those that the pattern \a known hits.
[[nodiscard]] QStringList disagreements(const QString &directory, const QString &days, const QString &known);
/// The pattern of what an operator leaves who gives a file that was set aside its place by hand.
[[nodiscard]] QString movedByHand();
