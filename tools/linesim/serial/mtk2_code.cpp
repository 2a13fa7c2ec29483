#include "tools/linesim/serial/mtk2_code.h"

#include <optional>

namespace
{
using namespace Mtk2;

// Each register's characters by code, 0 to 31.
const QString registers[] = {
    QStringLiteral("|E\nA SIU\rDRJNFCKTZLWHYPQOBG#MXV&"),
    QStringLiteral("|Е\nА СИУ\rДРЙНФЦКТЗЛВХЫПЯОБГ#МЬЖ&"),
    QStringLiteral("|3\n- '87\r*4Ю,Э:(5+)2Щ6019?Ш#./=&"),
};

std::optional<Register> registerOf(char code)
{
    switch (code) {
    case LatinCode: return Latin;
    case LettersCode: return Letters;
    case FiguresCode: return Figures;
    default: return std::nullopt;
    }
}

char codeOf(Register state)
{
    switch (state) {
    case Latin: return LatinCode;
    case Letters: return LettersCode;
    case Figures: return FiguresCode;
    }
    return LettersCode;
}

void encode(QChar c, QByteArray &codes, Register &state)
{
    for (const Register tried : {state, Latin, Letters, Figures}) {
        const int code = registers[tried].indexOf(c);
        if (code < 0)
            continue;
        if (tried != state)
            codes += codeOf(tried);
        codes += char(code);
        state = registerOf(char(code)).value_or(tried);
        return;
    }
}
} // namespace

QString Mtk2::decoded(const QByteArray &codes, Register &state)
{
    QString text;
    for (const char byte : codes) {
        const char code = byte & 0x1F;
        state = registerOf(code).value_or(state);
        text += registers[state].at(code);
    }
    return text;
}

QByteArray Mtk2::encoded(const QString &text, Register &state)
{
    QByteArray codes;
    for (const QChar c : text.toUpper())
        encode(c == QChar(0x0427) ? QChar('4') : c, codes, state);
    return codes;
}
