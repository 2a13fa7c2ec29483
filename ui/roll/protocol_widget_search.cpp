// Search in the lines shown, in the form in which they are shown.

#include "ui/roll/protocol_widget.h"

#include <QLineEdit>
#include <QScrollBar>

bool CProtocolWidget::lineHolds(int line, const QString &text) const
{
    QString shown;
    for (const Run &run : runsOf(m_shown->at(line)))
        shown += run.text;
    return shown.contains(text);
}

int CProtocolWidget::findLine(const QString &text, int from, int to) const
{
    for (int line = from; line < to; ++line)
        if (lineHolds(line, text))
            return line;
    return -1;
}

void CProtocolWidget::slotProtocolSearchChanged(const QString &text)
{
    const int hit = text.isEmpty() ? -1 : findLine(text, 0, m_shown->size());
    if (hit >= 0)
        selectAndShowLine(hit);
}

void CProtocolWidget::slotProtocolSearchReturnPressed()
{
    const QString text = m_search->text();
    if (text.isEmpty())
        return;
    const bool oneLine = hasSelection() && m_firstSelected == m_lastSelected;
    const int next = oneLine ? m_firstSelected + 1 : 0;
    int hit = findLine(text, next, m_shown->size());
    if (hit < 0)
        hit = findLine(text, 0, next);
    if (hit >= 0)
        selectAndShowLine(hit);
}

void CProtocolWidget::selectAndShowLine(int line)
{
    m_firstSelected = m_lastSelected = line;
    m_anchor = -1;
    for (const Pane &pane : panes())
        if (pane.lines == m_shown)
            m_bar->setValue(qMin(line, tailTop(*pane.lines)) - pane.shift);
    updateAll();
}
