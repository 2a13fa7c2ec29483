#include "line_text.h"

#include "app/journal_words.h"
#include "records/digits.h"
#include "text/marks.h"
#include "text/utils.h"

namespace
{
constexpr int NumberLength = 3;

bool isStart(const CJournalLine &line)
{
    return line.isService() && line.words().startsWith(JournalWords::Started);
}

int indexOfEither(const QString &text, const QString &one, const QString &other, int from)
{
    const int a = text.indexOf(one, from);
    const int b = text.indexOf(other, from);
    return a < 0 || b < 0 ? qMax(a, b) : qMin(a, b);
}

int lastStart(const QString &text, int from, int before)
{
    const int last =
        qMax(text.lastIndexOf(Marks::Start, before), text.lastIndexOf(Marks::LatinStart, before));
    return qMax(from, last);
}

/// The number that \a text begins with; -1 if there is none.
int numberOf(const QString &text)
{
    const int from = text.startsWith(QLatin1Char('#')) ? 1 : 0;
    if (text.size() <= from + NumberLength || text.at(from + NumberLength) != QLatin1Char(' '))
        return -1;
    return digitsAt(text, from, NumberLength);
}
} // namespace

void CLineText::append(const CJournalFile &journal)
{
    for (const CJournalLine &line : journal.lines) {
        if (isStart(line))
            m_cuts.append(m_text.size());
        for (const CJournalLine::Piece &piece : line.pieces) {
            if (piece.type != m_type)
                continue;
            m_parts.append({m_text.size(), {journal.date, line.number}});
            m_text += piece.text;
        }
    }
    m_text.replace(QLatin1Char('<'), QLatin1Char('\r')).replace(QLatin1Char('>'), QLatin1Char('\n'));
    m_letters.clear();
    m_sought = 0;
}

CPlace CLineText::placeOf(int position) const
{
    const auto behind = std::upper_bound(m_parts.begin(), m_parts.end(), position,
                                         [](int at, const Part &part) { return at < part.position; });
    return behind == m_parts.begin() ? CPlace() : (behind - 1)->place;
}

CLineMessage CLineText::message(int start, int end, int to) const
{
    CLineMessage message;
    message.begin = placeOf(start);
    const int from = start + Marks::StartLength;
    message.text = m_text.mid(from, (end < 0 ? to : end) - from);
    message.number = numberOf(message.text);
    if (end >= 0)
        message.end = placeOf(end);
    return message;
}

void CLineText::messagesOf(int from, int to, bool fromLastStart, QVector<CLineMessage> &found) const
{
    while (from < to) {
        const int first = indexOfEither(m_text, Marks::Start, Marks::LatinStart, from);
        if (first < 0 || first >= to)
            return;
        int end = indexOfEither(m_text, Marks::End, Marks::LatinEnd, first);
        if (end >= to)
            end = -1;
        const int start = fromLastStart ? lastStart(m_text, first, end < 0 ? to - 1 : end) : first;
        found.append(message(start, end, to));
        if (end < 0)
            return;
        from = end + Marks::EndLength;
    }
}

QVector<CLineMessage> CLineText::messages(bool fromLastStart) const
{
    QVector<CLineMessage> found;
    int from = 0;
    for (const int cut : m_cuts) {
        messagesOf(from, cut, fromLastStart, found);
        from = cut;
    }
    messagesOf(from, m_text.size(), fromLastStart, found);
    return found;
}

bool CLineText::holds(const QString &letters)
{
    if (m_letters.isEmpty())
        m_letters = lettersOf(m_text);
    int at = m_letters.indexOf(letters, m_sought);
    if (at < 0)
        at = m_letters.indexOf(letters);
    if (at < 0)
        return false;
    m_sought = at;
    return true;
}

QString lettersOf(const QString &text)
{
    QString letters;
    letters.reserve(text.size());
    for (const QChar c : text)
        if (c.isLetterOrNumber())
            letters += c.toUpper() == QChar(u'Ч') ? QLatin1Char('4') : c.toUpper();
    return letters;
}
