#include "text/utils.h"
#include "text/marks.h"

namespace
{
/// The smaller of two positions of which -1 means none.
int earlier(int a, int b)
{
    if (a < 0 || b < 0)
        return qMax(a, b);
    return qMin(a, b);
}

/// The last \a digits decimal digits of \a n, which is taken without its sign.
QString lastDigits(int n, int modulus, int digits)
{
    return QStringLiteral("%1").arg(qAbs(n % modulus), digits, 10, QLatin1Char('0'));
}
} // namespace

bool CUtils::isRegister(QChar c)
{
    return c.unicode() < 0x80 && isRegister(char(c.unicode()));
}

bool CUtils::isRegister(char c)
{
    switch (c) {
    case '"':
    case '#':
    case '&':
    case '<':
    case '>':
    case '|': return true;
    default: return false;
    }
}

QString CUtils::removeRegisters(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text)
        if (!isRegister(c))
            kept += c;
    return kept;
}

QString CUtils::removeNonTextChars(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text)
        if (c != QChar(1) && c != QChar(2) && !isRegister(c))
            kept += c;
    return kept;
}

int CUtils::lengthOnlyMTK2(const QString &text)
{
    int length = 0;
    for (const QChar c : text)
        if (c.unicode() > 6 && !isRegister(c))
            ++length;
    return length;
}

int CUtils::indexOfZCZC(const QString &text)
{
    return earlier(text.indexOf(Marks::Start), text.indexOf(Marks::LatinStart));
}

int CUtils::indexOfNNNN(const QString &text)
{
    return earlier(text.indexOf(Marks::End), text.indexOf(Marks::LatinEnd));
}

QString CUtils::StringNNN(int n)
{
    return lastDigits(n, 1000, 3);
}

QString CUtils::StringNN(int n)
{
    return lastDigits(n, 100, 2);
}

QString CUtils::categoryLetter(const QString &category)
{
    return category.startsWith(u'C') ? QStringLiteral("q") : QStringLiteral("u"); // a Latin C
}

bool CUtils::categoryIsV(const QString &category)
{
    return !category.isEmpty() && !category.startsWith(u'В'); // a Cyrillic В
}

QString CUtils::leaveOnlyDigits(QString text)
{
    QString digits;
    for (const QChar c : qAsConst(text))
        if (c.isDigit())
            digits += c;
    return digits;
}

QString CUtils::testTlgText()
{
    return QStringLiteral("<>#(0):-|В #4&A#Щ&A|Х #Ю|Г&A |ЖИЛ БЫ ЦИТРУС#?|Д&A#,|НО Ф&A|ЛЬ#Ш|ИВЫЙ #ЭКЗЕМПЛЯР"
                          "#+1234567890=/'|||")
        .repeated(4);
}
