#pragma once

#include <QString>

/// What a tab shows of a telegram's file: the whole text or none of it, so that no command acts on a part.
struct ShownText {
    QString text;    ///< up to the file's first NUL, with the letters of the national language
    QString trouble; ///< why nothing can be shown, in words for the operator; empty if the text is there
    QString tooLong; ///< the whole text where it is too long to be shown, for the files enclosed in it
};

// What a text view lays out within a tick. The words of Thai, which has no blanks, are sought through the
// whole line, at a cost that grows with its square: a minute for a million letters.
constexpr int LongestShown = 1 << 20;   ///< characters
constexpr int MostShownLines = 100000;  ///< that end in CR LF, or twice as many others
constexpr int MostThaiInLine = 1 << 15; ///< letters

/// Reads the telegram \a path, as UTF-8. A file that cannot be read, or is no ordinary one, gets a journal
/// line.
[[nodiscard]] ShownText readShownText(const QString &path);
