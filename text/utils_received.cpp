#include "text/utils.h"

// What turns received text into text to be read: letters that the code cannot carry, adapter commands.

namespace
{
/// Whether the "4" at \a i was a figure; its neighbours are those on the line, marks included. Otherwise
/// the letter Ч was meant, which the code carries as that figure.
bool isFigureFour(const QString &text, int i)
{
    const bool isFirst = i == 0;
    const bool isLast = i == text.size() - 1;
    if (isFirst && isLast)
        return true;
    if (!isFirst && text.at(i - 1).isDigit())
        return true;
    const bool afterSpace = !isFirst && text.at(i - 1) == u' ';
    if (isLast)
        return afterSpace;
    const QChar next = text.at(i + 1);
    if (next.isDigit())
        return true;
    return (isFirst || afterSpace) && next == u' '; // by itself; before letters or a mark it is Ч
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

int skipDigits(const QString &text, int i)
{
    while (i < text.size() && isAsciiDigit(text.at(i)))
        ++i;
    return i;
}

/// End of a command of dialling, whose number begins at \a i: its digits and "+" signs and the "@" that
/// ends it, or whatever stands in its place.
int endOfNumber(const QString &text, int i)
{
    while (i < text.size() && (isAsciiDigit(text.at(i)) || text.at(i) == u'+'))
        ++i;
    return i + 1;
}

/// Position behind the command whose "@" stands at \a at.
int endOfCommand(const QString &text, int at)
{
    const int next = at + 1;
    if (next == text.size())
        return next;
    const QChar letter = text.at(next);
    if (letter == u'N' || letter == u'n')
        return endOfNumber(text, next + 1);
    const int afterDigits = skipDigits(text, next);
    if (afterDigits == next)
        return next + 1;
    if (afterDigits == text.size())
        return afterDigits;
    return text.at(afterDigits) == u'*' ? afterDigits + 1 : next + 1;
}
} // namespace

QString CUtils::removeRegistersAndCheck4(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'&' || c == u'#' || c == u'|')
            continue;
        kept += c == u'4' && !isFigureFour(text, i) ? QChar(u'Ч') : c;
    }
    return kept;
}

QString CUtils::removeService(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (int i = 0; i < text.size();) {
        if (text.at(i) == u'@')
            i = endOfCommand(text, i);
        else
            kept += text.at(i++);
    }
    return kept;
}
