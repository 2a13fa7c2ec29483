#include "text/growing_text.h"

void CGrowingText::removeHead(int count)
{
    if (count <= 0)
        return;
    m_text.remove(0, count);
    m_lastCut = CScanPosition::nextCut();
}

CGrowingText &CGrowingText::operator=(const QString &text)
{
    m_text = text;
    m_lastCut = CScanPosition::nextCut();
    return *this;
}
