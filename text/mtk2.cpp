#include "text/mtk2.h"

#include "app/options.h"
#include "text/mtk2_lookup.h"

namespace
{
constexpr int Cells = 32;
constexpr unsigned char Filler = 32;
constexpr unsigned char RegisterCodes[3] = {0x1F, 0x00, 0x1B};

bool masksAreOn()
{
    return Options.nationalLanguageUse == Tatar && !tatar[0].letter.isNull();
}

bool isMaskedLetter(QChar c)
{
    for (const MTKMask *entry = tatar; !entry->letter.isNull(); ++entry)
        if (entry->letter == c)
            return true;
    return false;
}

bool isGeorgianLetter(QChar c)
{
    return c.unicode() >= 0x10D0 && c.unicode() <= 0x10FA;
}
} // namespace

unsigned char MTK2Registr(int reg)
{
    return RegisterCodes[reg];
}

void initMTK2Table()
{
    switch (Options.nationalLanguageUse) {
    case Georgian: fromMTKcode = fromMTKcode_GEORGIAN; break;
    case Armenian: fromMTKcode = fromMTKcode_ARMENIAN; break;
    default: fromMTKcode = fromMTKcode_RUSSIAN; break;
    }
    (void)MTK2Lookup::inForce(); // prepared here, not at the first character of the line
}

int findMTK(QChar c, int reg)
{
    const char16_t *row = fromMTKcode[reg];
    for (int code = 0; code < Cells; ++code)
        if (row[code] == c.unicode())
            return code;
    return MTKNotFound;
}

QChar findQChar(unsigned char code, int reg)
{
    return QChar(fromMTKcode[reg][qMin(code, Filler)]);
}

void QStringFromMTK2(const QByteArray &codes, QString &text, int &reg)
{
    QString decoded(codes.size(), Qt::Uninitialized);
    MTK2Lookup::inForce().decode(codes.constData(), codes.size(), decoded.data(), reg);
    text = std::move(decoded);
}

QChar QCharFromMTK2(unsigned char code, int &reg)
{
    return MTK2Lookup::inForce().decode(code, reg);
}

QString QStringFromMTK2(unsigned char code, int &reg)
{
    return QString(QCharFromMTK2(code, reg));
}

void MTK2FromQString(const QString &text, QByteArray &codes, int &reg)
{
    QByteArray encoded(2 * text.size(), Qt::Uninitialized); // at most a register code before each code
    char *const begin = encoded.data();
    const char *const end = MTK2Lookup::inForce().encode(text, begin, reg);
    encoded.resize(int(end - begin));
    codes = std::move(encoded);
}

bool QCharIsValidForMTK2(QChar c)
{
    return MTK2Lookup::inForce().carries(c) || (masksAreOn() && isMaskedLetter(c));
}

QChar upperMTK2(QChar c)
{
    return isGeorgianLetter(c) ? c : c.toUpper();
}

QString upperMTK2(const QString &text)
{
    QString upper;
    int begin = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (!isGeorgianLetter(text.at(i)))
            continue;
        upper += text.mid(begin, i - begin).toUpper() + text.at(i);
        begin = i + 1;
    }
    return begin == 0 ? text.toUpper() : upper + text.mid(begin).toUpper();
}

void maskNationalLanguage(QString &text)
{
    if (!masksAreOn())
        return;
    for (const MTKMask *entry = tatar; !entry->letter.isNull(); ++entry)
        text.replace(entry->letter, entry->mask);
}

void unmaskNationalLanguage(QString &text)
{
    if (!masksAreOn())
        return;
    for (const MTKMask *entry = tatar; !entry->letter.isNull(); ++entry)
        text.replace(entry->mask, QString(entry->letter));
}
