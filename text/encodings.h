#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>

/// The encodings beside the 5-bit code. Functions with an output parameter clear it first.

/// CORVA, the 8-bit encoding of the TCP links and of raw printing: code page 866 with capital letters only,
/// "*" as 0x05 and, with a national language, Georgian or Armenian letters in the upper part.
void QStringFromCORVA(QByteArray &bytes, QString &text);
void CORVAFromQString(QString &text, QByteArray &bytes);

/// Windows-1251, capital letters only, without Ё.
void QStringFromCP1251(QByteArray &bytes, QString &text);
void CP1251FromQString(QString &text, QByteArray &bytes);

/// Binary data in sixteen figures of the code, high four bits first.
[[nodiscard]] QString ByteToMTKCoding(unsigned char byte);
[[nodiscard]] QString ByteArrayToMTKCoding(QByteArray bytes);
/// 0..15, or 16 for a character outside the alphabet.
[[nodiscard]] int ByteFromMTKCoding(QChar c);
/// Skips foreign characters; a half byte at the end is dropped.
[[nodiscard]] QByteArray ByteArrayFromMTKCoding(QString text);

/// Cyrillic letters А..Я of either case as Latin capitals; all else unchanged.
[[nodiscard]] QString QStringTransliterate(QString text);
