// How news of the journal reach the screen. A fast line must not repaint the roll for each character: in
// automatic mode a change waits for the second, or for its eleventh fellow.

#include "app/state.h"
#include "ui/roll/protocol_widget.h"

#include <QRegion>
#include <QScrollBar>

namespace
{
constexpr int MaxUnshownChanges = 10;
} // namespace

void CProtocolWidget::slotProtocolDataChanged()
{
    ++m_dirty;
    ++m_unshown;
    if ((State.manualMode && m_showInfo) || m_unshown > MaxUnshownChanges)
        showNews();
}

void CProtocolWidget::slotFlush()
{
    if (m_unshown != 0)
        showNews();
}

// The list and the bar are renewed at once, so that the roll knows its end; the screen follows by the rule.
void CProtocolWidget::slotProtocolNewLine()
{
    ++m_dirty;
    ++m_unshown;
    if (!isToday())
        return;
    const bool atEnd = isLastString();
    m_wholeUnshown = true;
    m_holdPaint = true;
    checkShowList();
    updateRange(atEnd);
    m_holdPaint = false;
    if (State.manualMode || m_unshown > MaxUnshownChanges)
        showNews();
}

void CProtocolWidget::showNews()
{
    if (!isVisible() || !isLastString())
        return;
    const int before = longestList();
    checkShowList();
    m_holdPaint = true;
    updateRange(true);
    m_holdPaint = false;
    if (m_wholeUnshown || longestList() != before)
        updateAll();
    else
        updateLastRows();
    m_unshown = 0;
    m_wholeUnshown = false;
}

void CProtocolWidget::updateAll()
{
    m_unshown = 0;
    m_wholeUnshown = false;
    update(textArea());
}

// Lines that have moved without a repaint would not fit to a last row painted alone.
void CProtocolWidget::updateLastRows()
{
    if (m_wholeUnshown)
        return updateAll();
    QRegion rows;
    for (const Pane &pane : panes())
        if (const QRect row = lastRowRect(pane); row.isValid())
            rows += withInk(row) & pane.area;
    if (isLastString())
        update(rows);
}

QRect CProtocolWidget::lastRowRect(const Pane &pane) const
{
    const int row = qMax(0, pane.lines->size() - 1) - pane.top;
    if (row >= rowsOfPane())
        return {};
    return rowRect(pane, row);
}
