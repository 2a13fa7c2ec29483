#include "tools/linesim/line/corva.h"

namespace
{
constexpr char Star = 0x05;
constexpr ushort FirstCapital = 0x0410; // А
constexpr ushort LastCapital = 0x042F;  // Я
constexpr ushort LastSmall = 0x044F;    // я
constexpr uchar FirstLetterByte = 0x80;
constexpr uchar LastLetterByte = 0x9F;
constexpr ushort LettersInAlphabet = 32;
} // namespace

QByteArray toCorva(const QString &text)
{
    QByteArray bytes;
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (code == '*')
            bytes += Star;
        else if (code > 0 && code < 0x80)
            bytes += char(code);
        else if (code >= FirstCapital && code <= LastSmall)
            bytes += char(FirstLetterByte + (code - FirstCapital) % LettersInAlphabet);
    }
    return bytes;
}

QString fromCorva(const QByteArray &bytes)
{
    QString text;
    for (const char c : bytes) {
        const auto byte = uchar(c);
        if (byte == uchar(Star))
            text += QLatin1Char('*');
        else if (byte > 0 && byte < FirstLetterByte)
            text += QLatin1Char(c);
        else if (byte >= FirstLetterByte && byte <= LastLetterByte)
            text += QChar(FirstCapital + byte - FirstLetterByte);
        else if (byte > LastLetterByte)
            text += QChar(QChar::ReplacementCharacter);
    }
    static_assert(LastCapital - FirstCapital == LastLetterByte - FirstLetterByte, "one byte per capital");
    return text;
}
