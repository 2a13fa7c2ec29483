#include "ui/roll/protocol_splitter.h"

#include "records/protocol.h"
#include "text/utils.h"

namespace
{
constexpr int FirstTextCode = 10; // below it a character is a type mark
} // namespace

void CProtocolSplitter::restart(const Rules &rules)
{
    CProtocolSplitter fresh;
    fresh.m_rules = rules; // perhaps this object's own
    *this = fresh;
}

void CProtocolSplitter::take(const CJournalLines &source)
{
    if (!m_line.holds(source))
        restart(m_rules);
    const int first = m_line.in(source);
    for (int i = first; i < source.size(); ++i) {
        const QString &line = source.at(i);
        const int from = i == first ? m_offset : 0;
        for (int k = from; k < line.size(); ++k)
            takeChar(line.at(k));
        m_offset = line.size();
    }
    m_line.reach(source, qMax(0, source.size() - 1));
}

void CProtocolSplitter::takeChar(QChar c)
{
    if (c == '\n')
        return;
    if (c.unicode() < FirstTextCode)
        return takeMark(c.unicode());
    if (m_inInfo && !m_rules.showInfo)
        return;
    if (List *list = listInForce())
        put(*list, c);
}

void CProtocolSplitter::takeMark(int mark)
{
    if (mark > ProtocolOther)
        return;
    m_mark = mark;
    m_inInfo = mark == ProtocolInfo;
}

CProtocolSplitter::List *CProtocolSplitter::listInForce()
{
    if (!m_rules.split || m_mark == ProtocolReceived)
        return &m_lists[0];
    return m_mark == ProtocolSent ? &m_lists[1] : nullptr;
}

// The marks of the registers and of the line ends take no room: a limit that is reached breaks the line only
// when one more letter comes, so that "<>" stays with its line.
void CProtocolSplitter::put(List &list, QChar c)
{
    const bool counts = !CUtils::isRegister(c);
    if (counts && m_rules.widthLimit > 0 && list.width >= m_rules.widthLimit)
        list.open = false;
    if (!list.open) {
        list.lines.append(QString());
        list.open = true;
        list.mark = 0;
        list.width = 0;
    }
    QString &line = list.lines.last();
    if (list.mark != m_mark || line.isEmpty())
        line.append(QChar(m_mark == 0 ? int(ProtocolOther) : m_mark));
    list.mark = m_mark;
    line.append(c);
    list.width += counts ? 1 : 0;
    if (c == '>')
        list.open = false;
}
