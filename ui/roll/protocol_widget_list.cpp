// Which lists the roll shows, and how far they scroll.

#include "app/options.h"
#include "records/protocol.h"
#include "ui/roll/protocol_widget.h"

#include <QScrollBar>

const CJournalLines &CProtocolWidget::source() const
{
    return isToday() ? m_source->lines : m_otherDay;
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
    m_shown = isFiltered() ? &m_splitter.received() : &source().list();
    clearSelection();
    ++m_dirty;
    checkShowList();
    alignPanes();
    updateRange(false);
}

void CProtocolWidget::checkShowList()
{
    if (m_dirty == 0)
        return;
    m_dirty = 0;
    if (!isFiltered())
        return;
    const int received = m_splitter.received().size(), sent = m_splitter.sent().size();
    m_splitter.take(source());
    if (m_splitter.received().size() < received || m_splitter.sent().size() < sent)
        alignPanes(); // another journal: the former places mean nothing
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

// The first line of a pane that shows the end of its list.
int CProtocolWidget::tailTop(const QStringList &lines) const
{
    return qMax(0, lines.size() - rowsOfPane());
}

CProtocolWidget::Pane CProtocolWidget::newPane(const QStringList &lines, const QRect &area, int shift) const
{
    return {&lines, area, shift, qBound(0, m_bar->value() + shift, tailTop(lines))};
}

QVector<CProtocolWidget::Pane> CProtocolWidget::panes() const
{
    const QRect area = textArea();
    if (!m_showSplit)
        return {newPane(*m_shown, area, 0)};
    const int half = area.height() / 2;
    const QRect upper(area.left(), area.top(), area.width(), half);
    const QRect lower(area.left(), area.top() + half + 1, area.width(), area.height() - half - 1);
    return {newPane(m_splitter.received(), upper, m_receivedShift),
            newPane(m_splitter.sent(), lower, m_sentShift)};
}

// The panes of the split view scroll together, line by line. At the bar's end both stand at their ends; once
// scrolled back each keeps the distance that it had to the bar, so that a list which grows moves neither, and
// the bar grows by as much as is needed to reach both ends again.
void CProtocolWidget::alignPanes()
{
    const int received = tailTop(m_splitter.received()), sent = tailTop(m_splitter.sent());
    m_receivedShift = qMin(0, received - sent);
    m_sentShift = qMin(0, sent - received);
}

int CProtocolWidget::lastPosition() const
{
    if (!m_showSplit)
        return tailTop(*m_shown);
    return qMax(tailTop(m_splitter.received()) - m_receivedShift, tailTop(m_splitter.sent()) - m_sentShift);
}

void CProtocolWidget::updateRange(bool toEnd)
{
    if (toEnd)
        alignPanes();
    m_bar->setPageStep(rowsOfPane());
    m_bar->setRange(0, lastPosition());
    if (toEnd)
        m_bar->setValue(m_bar->maximum());
}

QRect CProtocolWidget::textArea() const
{
    const int top = m_panel->geometry().bottom() + 1;
    return {0, top, qMax(0, width() - m_bar->width()), qMax(0, height() - top)};
}

QRect CProtocolWidget::rowRect(const Pane &pane, int row) const
{
    const int top = pane.area.top() + m_inkAbove + row * m_lineSpacing;
    return {pane.area.left(), top, pane.area.width(), m_lineSpacing};
}

QRect CProtocolWidget::withInk(const QRect &row) const
{
    return row.adjusted(0, -m_inkAbove, 0, m_inkBelow);
}

QRect CProtocolWidget::lineRect(int line) const
{
    for (const Pane &pane : panes()) {
        const int row = line - pane.top;
        if (pane.lines == m_shown && row >= 0 && row < rowsOfPane())
            return rowRect(pane, row);
    }
    return {};
}
