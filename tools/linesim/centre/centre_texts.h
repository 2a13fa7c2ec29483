#pragma once

#include <QDateTime>
#include <QString>

/// The texts of a switching centre around its telegrams: headers, notes, register marks.

/// A header of one of the three forms, with its line end: 1 "П01 311200 07", 2 "П123 200 07",
/// 3 "П123=123 31 311200 ". Other forms give "".
[[nodiscard]] QString centreHeader(int form, const QDateTime &now, int number);

/// What may follow a telegram's time stamp. The names "long", "long-marked", "short", "short-marked" and
/// "dashed" give the forms of the note with "МИН"; any other text is itself, with \r and \n for line ends.
[[nodiscard]] QString centreNote(const QString &nameOrText);

/// \a text as a 5-bit line gives it: a mark in front of each change between letters ("|" national, "&" Latin)
/// and figures ("#"). Blank, CR and LF belong to every register.
[[nodiscard]] QString withRegisterMarks(const QString &text);

/// The first character of \a text that its register does not hold: a letter behind "#", a Latin one behind
/// "|", a national one behind "&". -1 if there is none; in front of the first mark everything goes.
[[nodiscard]] int findOutOfRegister(const QString &text);
