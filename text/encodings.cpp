#include "text/encodings.h"

#include "text/letters.h"

namespace
{
constexpr int BadCoding = 16;
constexpr char MTKCharFrom4bit[] = "0123456789:-+=.,";
} // namespace

void QStringFromCP1251(QByteArray &bytes, QString &text)
{
    text.clear();
    text.reserve(bytes.size());
    for (const char c : qAsConst(bytes)) {
        const auto byte = uchar(c);
        if (byte < 0x80)
            text += QChar(ushort(byte));
        else if (byte >= 0xC0)
            text += Letters::at((byte - 0xC0) % Letters::Count);
    }
}

void CP1251FromQString(QString &text, QByteArray &bytes)
{
    bytes.clear();
    bytes.reserve(text.size());
    for (const QChar c : qAsConst(text)) {
        const int index = Letters::indexOf(c.unicode());
        if (index >= 0)
            bytes += char(0xC0 + index);
        else if (c.unicode() > 0 && c.unicode() < 0x80)
            bytes += char(c.unicode());
    }
}

QString ByteToMTKCoding(unsigned char byte)
{
    return QString(QLatin1Char(MTKCharFrom4bit[byte >> 4])) + QLatin1Char(MTKCharFrom4bit[byte & 0x0F]);
}

QString ByteArrayToMTKCoding(QByteArray bytes)
{
    QString coded;
    coded.reserve(2 * bytes.size());
    for (const char byte : qAsConst(bytes))
        coded += ByteToMTKCoding(uchar(byte));
    return coded;
}

int ByteFromMTKCoding(QChar c)
{
    for (int value = 0; value < BadCoding; ++value)
        if (c == QLatin1Char(MTKCharFrom4bit[value]))
            return value;
    return BadCoding;
}

QByteArray ByteArrayFromMTKCoding(QString text)
{
    QByteArray bytes;
    bytes.reserve(text.size() / 2);
    int high = BadCoding; // none is held
    for (const QChar c : qAsConst(text)) {
        const int value = ByteFromMTKCoding(c);
        if (value == BadCoding)
            continue;
        if (high == BadCoding) {
            high = value;
        } else {
            bytes += char(high * 16 + value);
            high = BadCoding;
        }
    }
    return bytes;
}

QString QStringTransliterate(QString text)
{
    static const char *const TransliterateTable[Letters::Count] = {
        "A", "B", "V", "G", "D", "E", "J", "Z",  "I",  "I",  "K", "L", "M", "N", "O",  "P",
        "R", "S", "T", "U", "F", "H", "C", "CH", "SH", "SC", "'", "Y", "'", "E", "IU", "IA"};
    QString latin;
    latin.reserve(text.size());
    for (const QChar c : qAsConst(text)) {
        const int index = Letters::indexOf(c.unicode());
        if (index < 0)
            latin += c;
        else
            latin += QLatin1String(TransliterateTable[index]);
    }
    return latin;
}
