#pragma once

#include <QString>

/// What a text view shows of \a text, so that nobody waits for its layout: a telegram whole, of a file of
/// many megabytes, or of as many lines, the beginning with a note of the whole length. Line breaks stand in
/// lines of thousands of characters.
[[nodiscard]] QString shownPart(const QString &text);
