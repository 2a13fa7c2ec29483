#include "text/file_coding.h"

#include <QHash>
#include <QSet>
#include <QTextCodec>

namespace
{
constexpr int HalfPage = 128;
constexpr char NoCode = '?';

using Codes = QHash<uint, char>;

/// The codes of the page that the toolkit calls \a name. The lower half is ASCII, as it stands: the toolkit's
/// CP866 has other control characters there. What a page has below 0xA0 of Unicode's are controls that no
/// byte means.
Codes codesOf(const char *name)
{
    const QTextCodec *codec = QTextCodec::codecForName(name);
    Codes codes;
    for (int i = 0; i < HalfPage; ++i) {
        codes.insert(uint(i), char(i));
        if (codec == nullptr) // what it would code counts as lost, which the operator is told
            continue;
        const char upper = char(HalfPage + i);
        const QString character = codec->toUnicode(&upper, 1);
        if (character.at(0) >= QChar(QChar::Nbsp) && character.at(0) != QChar(QChar::ReplacementCharacter))
            codes.insert(character.at(0).unicode(), upper);
    }
    return codes;
}

/// Appends one character; false if the coding lacks it.
bool appendCharacter(QByteArray &bytes, uint character, const Codes *page)
{
    if (QChar::isSurrogate(character)) // half of one, which is none
        return false;
    if (page == nullptr) {
        bytes += QString::fromUcs4(&character, 1).toUtf8();
        return true;
    }
    const auto code = page->constFind(character);
    if (code == page->constEnd())
        return false;
    bytes += code.value();
    return true;
}

const Codes *pageOf(FileCoding coding)
{
    static const Codes cp866 = codesOf("IBM866");
    static const Codes cp1251 = codesOf("windows-1251");
    switch (coding) {
    case FileCoding::CP866: return &cp866;
    case FileCoding::CP1251: return &cp1251;
    case FileCoding::UTF8: break;
    }
    return nullptr;
}

uint characterAt(const QString &text, int at)
{
    const QChar c = text.at(at);
    if (c.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
        return QChar::surrogateToUcs4(c, text.at(at + 1));
    return c.unicode();
}
} // namespace

CodedText codedText(const QString &text, FileCoding coding)
{
    const Codes *page = pageOf(coding);
    CodedText coded;
    QSet<uint> known; // those among coded.lost
    coded.bytes.reserve(text.size());
    for (int at = 0; at < text.size(); ++at) {
        const uint character = characterAt(text, at);
        if (QChar::requiresSurrogates(character))
            ++at;
        if (appendCharacter(coded.bytes, character, page))
            continue;
        coded.bytes += NoCode;
        ++coded.lostCount;
        if (known.contains(character))
            continue;
        known << character;
        coded.lost << character;
    }
    return coded;
}

QString nameOf(FileCoding coding)
{
    switch (coding) {
    case FileCoding::CP866: return QStringLiteral("CP866");
    case FileCoding::CP1251: return QStringLiteral("CP1251");
    case FileCoding::UTF8: break;
    }
    return QStringLiteral("UTF-8");
}

bool isUtf8(const QByteArray &bytes)
{
    static const QTextCodec *const codec = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state;
    (void)codec->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}
