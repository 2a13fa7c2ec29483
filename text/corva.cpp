#include "text/encodings.h"

#include "app/options.h"
#include "text/letters.h"

namespace
{
constexpr char Star = 0x05;
constexpr int LettersByte = 0x80;

constexpr ushort GeorgianBegin = 0x10D0;
constexpr int GeorgianCount = 33;
constexpr ushort ArmenianBegin = 0x0531;
constexpr ushort SmallArmenianBegin = 0x0561;
constexpr int ArmenianCount = 38;

/// Bytes of the letters of a national alphabet, in its order. Georgian, shorter, uses the first 33.
constexpr uchar NationalBytes[ArmenianCount] = {0xA1, 0xA2, 0xA3, 0xA4, 0xA6, 0xA7, 0xA8, 0xA9, 0xAA, 0xAB,
                                                0xAC, 0xAD, 0xAF, 0xE2, 0xE4, 0xE6, 0xE7, 0xE8, 0xE9, 0xEA,
                                                0xEB, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF2, 0xF3, 0xF4,
                                                0xF5, 0xF6, 0xF7, 0xF8, 0xF9, 0xFC, 0xFD, 0xFE};

/// The letter of \a byte in an alphabet that begins at \a begin; a space if it has none there.
QChar nationalLetter(uchar byte, ushort begin, int count)
{
    for (int i = 0; i < count; ++i)
        if (NationalBytes[i] == byte)
            return QChar(begin + i);
    return QChar(u' ');
}

/// Place of \a c in its alphabet, or -1.
int nationalIndex(ushort c)
{
    if (c >= GeorgianBegin && c < GeorgianBegin + GeorgianCount)
        return c - GeorgianBegin;
    if (c >= ArmenianBegin && c < ArmenianBegin + ArmenianCount)
        return c - ArmenianBegin;
    if (c >= SmallArmenianBegin && c < SmallArmenianBegin + ArmenianCount)
        return c - SmallArmenianBegin;
    return -1;
}

/// The small letters of the code page, 0xA0..0xAF and 0xE0..0xEF, read as capitals. Behind them stand signs
/// that the telegraph does not have: a space keeps the words apart. Tatar has small letters in their place.
QChar cyrillicUpperPart(uchar byte, int language)
{
    if (byte < 0xB0)
        return Letters::at(byte - 0xA0);
    if (byte < 0xF0)
        return Letters::at(byte - 0xE0 + 0x10);
    return language == Tatar ? QChar(Letters::SmallBegin + byte - 0xF0) : QChar(u' ');
}

QChar upperPart(uchar byte, int language)
{
    switch (language) {
    case NoNationalLanguage:
    case Tatar: return cyrillicUpperPart(byte, language);
    case Georgian: return nationalLetter(byte, GeorgianBegin, GeorgianCount);
    case Armenian: return nationalLetter(byte, ArmenianBegin, ArmenianCount);
    default: return QChar();
    }
}

/// What \a byte stands for; null if it is dropped.
QChar decode(uchar byte, int language)
{
    if (byte == Star)
        return QChar(u'*');
    if (byte < 0x80)
        return QChar(ushort(byte));
    if (byte < 0xA0)
        return Letters::at(byte - LettersByte);
    if (byte >= 0xB0 && byte < 0xE0)
        return QChar();
    return upperPart(byte, language);
}

/// The byte of \a c; 0 if it is dropped.
char encode(ushort c, int language)
{
    if (c == '*')
        return Star;
    if (c < 0x80)
        return char(c);
    const int index = Letters::indexOf(c);
    if (index >= 0)
        return char(LettersByte + index);
    // Any language opens both alphabets.
    const int national = language == NoNationalLanguage ? -1 : nationalIndex(c);
    return national < 0 ? '\0' : char(NationalBytes[national]);
}
} // namespace

void QStringFromCORVA(QByteArray &bytes, QString &text)
{
    const int language = Options.nationalLanguageUse;
    text.clear();
    text.reserve(bytes.size());
    for (const char byte : qAsConst(bytes)) {
        const QChar c = decode(uchar(byte), language);
        if (!c.isNull())
            text += c;
    }
}

void CORVAFromQString(QString &text, QByteArray &bytes)
{
    const int language = Options.nationalLanguageUse;
    bytes.clear();
    bytes.reserve(text.size());
    for (const QChar c : qAsConst(text)) {
        const char byte = encode(c.unicode(), language);
        if (byte != '\0')
            bytes += byte;
    }
}
