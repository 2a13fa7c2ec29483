#include "procedures/utils_skk.h"

namespace
{
constexpr int ShortItem = 5; ///< characters of an item that is no number yet

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isDigitPattern(QChar pattern)
{
    return pattern == QLatin1Char('d') || pattern == QLatin1Char('h') || pattern == QLatin1Char('m');
}

bool matches(QChar c, QChar pattern)
{
    if (pattern == QLatin1Char('<'))
        return c == QLatin1Char('\r') || c == QLatin1Char('<');
    if (pattern == QLatin1Char('>'))
        return c == QLatin1Char('\n') || c == QLatin1Char('>');
    return isDigitPattern(pattern) ? isDigit(c) : c == pattern;
}

bool matchesAt(const QString &text, int at, const QString &format)
{
    for (int i = 0; i < format.size(); ++i)
        if (!matches(text.at(at + i), format.at(i)))
            return false;
    return true;
}

/// Where the form may begin, at or behind \a from; -1 if nowhere.
int nextTry(const QString &text, int from, QChar first)
{
    int at = -1;
    if (first == QLatin1Char('<'))
        at = text.indexOf(QLatin1Char('\r'), from);
    else if (first == QLatin1Char('>'))
        at = text.indexOf(QLatin1Char('\n'), from);
    return at >= 0 ? at : text.indexOf(first, from);
}

int firstDigit(const QString &text)
{
    for (int i = 0; i < text.size(); ++i)
        if (isDigit(text.at(i)))
            return i;
    return -1;
}
} // namespace

int CUtilsSKK::behindTimeStamp(const QString &text, int from, const QString &format)
{
    if (format.isEmpty())
        return -1;
    const int last = text.size() - format.size();
    if (isDigitPattern(format.at(0))) {
        const int at = firstDigit(text);
        return at >= 0 && at <= last && matchesAt(text, at, format) ? at + format.size() : -1;
    }
    for (int at = nextTry(text, from, format.at(0)); at >= 0 && at <= last;
         at = nextTry(text, at + 1, format.at(0)))
        if (matchesAt(text, at, format))
            return at + format.size();
    return -1;
}

int CUtilsSKK::checkCallNumber(const QString &input, QString &result)
{
    result.clear();
    int count = 0;
    int passed = 0; // characters of the item, dropped ones too
    for (const QChar c : input) {
        if (c == QLatin1Char(',') && passed > ShortItem) {
            result += c;
            ++count;
            passed = 0;
            continue;
        }
        if (isDigit(c) || c == QLatin1Char('+'))
            result += c;
        ++passed; // a comma behind a short item too: the item runs on
    }
    return passed > ShortItem ? count + 1 : count;
}
