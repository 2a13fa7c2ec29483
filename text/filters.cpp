#include "text/filters.h"

#include "text/mtk2.h"

namespace
{
/// Appends what \a turn makes of each upper-cased character; a null result leaves the choice to the code.
template <class Turn> QString clear(const QString &text, Turn turn)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text) {
        const QChar upper = upperMTK2(c);
        const QChar turned = turn(upper);
        if (!turned.isNull())
            kept += turned;
        else if (QCharIsValidForMTK2(upper))
            kept += upper;
    }
    return kept;
}

/// \a c if \a kept holds it, otherwise null.
QChar keepIfIn(const QString &kept, QChar c)
{
    return kept.contains(c) ? c : QChar();
}
} // namespace

QString QStringClearNonMTK2(const QString &text)
{
    return clear(text, [](QChar) { return QChar(); });
}

QString QStringClearNonMTK2SkipCRConverNL(const QString &text)
{
    return QStringClearNonMTK2ConverNLSkipChars(text, QStringLiteral("<"));
}

QString QStringClearNonMTK2ConverNLSkipChars(const QString &text, const QString &skip)
{
    return clear(text, [&skip](QChar c) { return c == u'>' ? QChar(u'\n') : keepIfIn(skip, c); });
}

QString QStringClearNonMTK2SkipCRNL(const QString &text)
{
    return clear(text, [](QChar c) { return keepIfIn(QStringLiteral("<>"), c); });
}

QString QStringClearForEditorNonMTK2(const QString &text)
{
    // Markers of a form in the editor, but for "]", which no form uses.
    return clear(text, [](QChar c) { return keepIfIn(QStringLiteral("{}[$<>"), c); });
}

QString nonTlgCharReplace(QString text)
{
    struct Row {
        QChar sign;
        const char *spelling;
    };
    // The code has no Ч, so that a 4 stands in "ЗВЕЗДО4КА"; the names that come after the replacement of
    // Ч keep theirs until the encoder. "*" has a code, but the network reserves the sign.
    static const Row rows[] = {
        {u'Ъ', "Ь"},
        {u'Ё', "Е"},
        {u'Ч', "4"},
        {u'\\', "/"},
        {u'!', " ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК "},
        {u'€', " ЕВРО "},
        {u'%', " ПРОЦЕНТЫ "},
        {u'*', " ЗВЕЗДО4КА "},
        {u';', " ТОЧКА С ЗАПЯТОЙ "},
        {u'@', "(A)"}, // a Latin A
        {u'_', " НИЖНЕЕ ПОДЧЕРКИВАНИЕ "},
        {u'№', " НОМЕР "},
    };
    text = upperMTK2(text);
    for (const Row &row : rows)
        text.replace(row.sign, QString::fromUtf8(row.spelling));
    return text;
}
