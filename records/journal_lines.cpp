#include "records/journal_lines.h"

CJournalLines &CJournalLines::operator<<(const QString &line)
{
    append(line);
    return *this;
}

void CJournalLines::replace(int i, const QString &line)
{
    m_lines[i] = line;
    m_lastCut = CScanPosition::nextCut();
}

CJournalLines &CJournalLines::operator=(const QStringList &lines)
{
    m_lines = lines;
    m_lastCut = CScanPosition::nextCut();
    return *this;
}
