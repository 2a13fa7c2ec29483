// Which lists the roll shows, and how far they scroll.

#include "app/options.h"
#include "records/protocol.h"
#include "ui/protocol_widget.h"

#include <QScrollBar>

const QStringList &CProtocolWidget::source() const
{
    return isToday() ? m_source->lines.list() : m_otherDay;
}

// The journal's own list is shown as it stands, without a copy, unless something is left out or parted.
bool CProtocolWidget::isFiltered() const
{
    return m_showSplit || !m_showInfo;
}

CProtocolSplitter::Rules CProtocolWidget::rulesInForce() const
{
    CProtocolSplitter::Rules rules;
    if (!isFiltered())
        return rules;
    rules.split = m_showSplit;
    rules.showInfo = m_showInfo;
    rules.widthLimit = Options.limitProtocolStringWidth ? Options.protocolStringWidth : 0;
    return rules;
}

void CProtocolWidget::showListAnew()
{
    m_splitter.restart(rulesInForce());
    m_shown = isFiltered() ? &m_splitter.received() : &source();
    clearSelection();
    ++m_dirty;
    checkShowList();
    updateRange(false);
}

void CProtocolWidget::checkShowList()
{
    if (m_dirty == 0)
        return;
    m_dirty = 0;
    if (isFiltered())
        m_splitter.take(source());
}

int CProtocolWidget::linesOnScreen() const
{
    return qMax(1, (textArea().height() + 1) / m_lineSpacing - 1);
}

int CProtocolWidget::rowsOfPane() const
{
    return m_showSplit ? qMax(1, linesOnScreen() / 2) : linesOnScreen();
}

int CProtocolWidget::longestList() const
{
    return m_showSplit ? qMax(m_splitter.received().size(), m_splitter.sent().size()) : m_shown->size();
}

// Both panes of the split view stand equally far from their ends, so that at the bar's end they show the
// last received and the last sent lines.
QVector<CProtocolWidget::Pane> CProtocolWidget::panes() const
{
    const QRect area = textArea();
    const int back = m_bar->maximum() - m_bar->value();
    const auto topOf = [&](const QStringList &lines) { return qMax(0, lines.size() - rowsOfPane() - back); };
    if (!m_showSplit)
        return {{m_shown, area, topOf(*m_shown)}};
    const int half = area.height() / 2;
    const QRect upper(area.left(), area.top(), area.width(), half);
    const QRect lower(area.left(), area.top() + half + 1, area.width(), area.height() - half - 1);
    return {{&m_splitter.received(), upper, topOf(m_splitter.received())},
            {&m_splitter.sent(), lower, topOf(m_splitter.sent())}};
}

void CProtocolWidget::updateRange(bool toEnd)
{
    const int rows = rowsOfPane();
    m_bar->setPageStep(rows);
    m_bar->setRange(0, qMax(0, longestList() - rows));
    if (toEnd)
        m_bar->setValue(m_bar->maximum());
}

QRect CProtocolWidget::textArea() const
{
    const int top = m_panel->geometry().bottom() + 1;
    return {0, top, qMax(0, width() - m_bar->width()), qMax(0, height() - top)};
}

QRect CProtocolWidget::lineRect(int line) const
{
    for (const Pane &pane : panes()) {
        const int row = line - pane.top;
        if (pane.lines == m_shown && row >= 0 && row < rowsOfPane())
            return {pane.area.left(), pane.area.top() + row * m_lineSpacing, pane.area.width(),
                    m_lineSpacing};
    }
    return {};
}
