#include "link/operator_parts.h"

#include <algorithm>
#include <utility>

void COperatorParts::add(int begin, int end)
{
    if (begin >= end)
        return;
    if (!m_parts.isEmpty() && m_parts.last().end == begin)
        m_parts.last().end = end;
    else
        m_parts.append({begin, end});
}

COperatorParts COperatorParts::takeHead(int n)
{
    COperatorParts head, rest;
    for (const Part &part : qAsConst(m_parts)) {
        head.add(part.begin, std::min(part.end, n));
        rest.add(std::max(part.begin, n) - n, part.end - n);
    }
    m_parts = std::move(rest.m_parts);
    return head;
}

void COperatorParts::limitTo(int size)
{
    while (!m_parts.isEmpty() && m_parts.last().begin >= size)
        m_parts.removeLast();
    if (!m_parts.isEmpty())
        m_parts.last().end = std::min(m_parts.last().end, size);
}

QString COperatorParts::withLineEnds(QString text) const
{
    for (const Part &part : m_parts)
        for (int i = part.begin; i < std::min(part.end, text.size()); ++i)
            if (text.at(i) == QLatin1Char('<'))
                text[i] = QLatin1Char('\r');
            else if (text.at(i) == QLatin1Char('>'))
                text[i] = QLatin1Char('\n');
    return text;
}
