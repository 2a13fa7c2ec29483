#include "ui/widgets/shown_part.h"

namespace
{
constexpr int MostCharacters = 1000000, MostLines = 20000, LongestLine = 2000;

/// Whether a view begins a new line behind the character.
bool endsLine(const QString &text, int at)
{
    switch (text.at(at).unicode()) {
    case '\n':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator: return true;
    case '\r': return at + 1 == text.size() || text.at(at + 1) != QLatin1Char('\n');
    default: return false;
    }
}
} // namespace

QString shownPart(const QString &text)
{
    QString part;
    int at = 0, lines = 0, length = 0;
    for (; at < text.size() && at < MostCharacters && lines < MostLines; ++at) {
        const bool end = endsLine(text, at);
        if (length == LongestLine && !end) {
            part += QLatin1Char('\n');
            ++lines;
            length = 0;
        }
        part += text.at(at);
        length = end ? 0 : length + 1;
        lines += end ? 1 : 0;
    }
    if (at < text.size())
        part += QStringLiteral("\n... всего знаков: %1").arg(text.size());
    return part;
}
