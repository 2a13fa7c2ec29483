#include "tools/linesim/centre/centre_texts.h"

#include "tools/linesim/console/event_log.h"

namespace
{
constexpr char National = '|', Figures = '#', Latin = '&', Any = 0;

bool isMark(QChar c)
{
    return c == QLatin1Char(National) || c == QLatin1Char(Figures) || c == QLatin1Char(Latin);
}

char registerOf(QChar c)
{
    if (c <= QLatin1Char(' '))
        return Any;
    if (!c.isLetter())
        return Figures;
    return c.unicode() < 0x80 ? Latin : National;
}
} // namespace

QString centreHeader(int form, const QDateTime &now, int number)
{
    const QString moment = now.toString(QStringLiteral("ddhhmm"));
    const QString words = QStringLiteral("%1").arg(number % 100, 2, 10, QLatin1Char('0'));
    switch (form) {
    case 1: return QStringLiteral("П01 %1 %2\r\n").arg(moment, words);
    case 2: return QStringLiteral("П%1 %2 %3\r\n").arg(moment.left(3), moment.mid(3), words);
    case 3: return QStringLiteral("П123=123 %1 %2 \r\n").arg(moment.left(2), moment);
    default: return QString();
    }
}

QString centreNote(const QString &nameOrText)
{
    struct Row {
        const char *name, *text;
    };
    static const Row rows[] = {
        {"long", "....МИН....ПРИНЯТА\r\n"},           {"long-marked", "....|МИН#....12\r\n"},
        {"dashed", "....МИН....ПРИНЯТА\r\n----\r\n"}, {"short", "....МИН.\r\n\n\n\n"},
        {"short-marked", "....|МИН#.\r\n\n\n\n"},
    };
    for (const Row &row : rows)
        if (nameOrText == QLatin1String(row.name))
            return QString::fromUtf8(row.text);
    return unescaped(nameOrText);
}

QString withRegisterMarks(const QString &text)
{
    QString marked;
    char current = Any;
    for (const QChar c : text) {
        const char needed = isMark(c) ? char(c.unicode()) : registerOf(c);
        if (needed != Any && needed != current && !isMark(c))
            marked += QLatin1Char(needed);
        if (needed != Any)
            current = needed;
        marked += c;
    }
    return marked;
}

int findOutOfRegister(const QString &text)
{
    char current = Any;
    for (int i = 0; i < text.size(); ++i) {
        if (isMark(text.at(i))) {
            current = char(text.at(i).unicode());
            continue;
        }
        const char needed = registerOf(text.at(i));
        // Figures stand in no letter's way: the adapter changes to them by itself.
        if (current != Any && needed != Any && needed != Figures && needed != current)
            return i;
    }
    return -1;
}
