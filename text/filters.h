#pragma once

#include <QString>

/// Filters of text from keyboards, clipboards and files. Each returns the text in upper case without the
/// characters that the 5-bit code cannot carry; they differ in what they keep or turn before that test.

/// For text that goes to the line.
[[nodiscard]] QString QStringClearNonMTK2(const QString &text);
/// Keeps "<"; ">" becomes LF.
[[nodiscard]] QString QStringClearNonMTK2SkipCRConverNL(const QString &text);
/// ">" becomes LF; the characters of \a skip, compared with case, stay.
[[nodiscard]] QString QStringClearNonMTK2ConverNLSkipChars(const QString &text, const QString &skip);
/// Keeps "<" and ">" as they are.
[[nodiscard]] QString QStringClearNonMTK2SkipCRNL(const QString &text);
/// Keeps "{", "}", "[", "$", "<" and ">", but not "]".
[[nodiscard]] QString QStringClearForEditorNonMTK2(const QString &text);

/// Spells out what the code cannot carry or the network must not get ("!" becomes
/// " ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК "), in upper case.
[[nodiscard]] QString nonTlgCharReplace(QString text);
