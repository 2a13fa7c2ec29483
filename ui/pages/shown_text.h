#pragma once

#include <QString>

/// What a tab shows of a telegram's file: the whole text or none of it, so that no command acts on a part.
struct ShownText {
    QString text;    ///< up to the file's first NUL, with the letters of the national language
    QString trouble; ///< why nothing can be shown, in words for the operator; empty if the text is there
};

constexpr int LongestShown = 1 << 20;  ///< characters; a text view lays so many out within a tick
constexpr int MostShownLines = 100000; ///< likewise

/// Reads the telegram \a path, as UTF-8. A file that cannot be read, or is no ordinary one, gets a journal
/// line.
[[nodiscard]] ShownText readShownText(const QString &path);
