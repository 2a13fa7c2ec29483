// The mouse on the roll: selection and wheel.

#include "ui/roll/protocol_widget.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace
{
constexpr int LinesOfWheelStep = 3;
constexpr int WheelStep = 120; // eighths of a degree
constexpr int ColumnShift = 3; // pixels
} // namespace

// The line under the point, or the nearest one on the screen of the pane that was pressed.
int CProtocolWidget::lineAt(const QPoint &point) const
{
    for (const Pane &pane : panes()) {
        if (pane.lines != m_shown)
            continue;
        const int row = qBound(0, (point.y() - rowRect(pane, 0).top()) / m_lineSpacing, rowsOfPane() - 1);
        return pane.top + row < pane.lines->size() ? pane.top + row : -1;
    }
    return -1;
}

// A second press at the same column stores another one: its release is then no release without movement, and
// the line stays selected. A third press begins again.
void CProtocolWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !textArea().contains(event->pos()))
        return QWidget::mousePressEvent(event);
    for (const Pane &pane : panes())
        if (pane.area.contains(event->pos()))
            m_shown = pane.lines;
    const int column = event->pos().x();
    m_pressColumn = column == m_pressColumn ? column + ColumnShift : column;
    m_anchor = lineAt(event->pos());
    m_firstSelected = m_lastSelected = m_anchor;
    updateAll();
}

void CProtocolWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton) || m_anchor < 0)
        return;
    const QRect area = textArea();
    if (event->pos().y() < area.top())
        m_bar->setValue(m_bar->value() - 1);
    if (event->pos().y() > area.bottom())
        m_bar->setValue(m_bar->value() + 1);
    const int line = lineAt(event->pos());
    extendSelection(line >= 0 ? line : m_shown->size() - 1);
}

void CProtocolWidget::extendSelection(int line)
{
    m_firstSelected = qMin(m_anchor, line);
    m_lastSelected = qMax(m_anchor, line);
    updateAll();
}

void CProtocolWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_anchor < 0)
        return;
    if (event->pos().x() == m_pressColumn && m_firstSelected == m_lastSelected)
        clearSelection();
    m_anchor = -1;
    updateAll();
}

void CProtocolWidget::clearSelection()
{
    m_firstSelected = m_lastSelected = m_anchor = -1;
}

void CProtocolWidget::wheelEvent(QWheelEvent *event)
{
    m_wheelRest += event->angleDelta().y();
    const int steps = m_wheelRest / WheelStep;
    m_wheelRest -= steps * WheelStep;
    if (steps != 0)
        move(-steps * LinesOfWheelStep);
    event->accept();
}
