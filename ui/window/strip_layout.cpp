#include "ui/window/strip_layout.h"

namespace
{
enum Box { First, Second, Third };
} // namespace

CStripLayout::CStripLayout(QWidget *parent) : QHBoxLayout0(parent) {}

void CStripLayout::setSizes(int boxWidth, int height, int lowHeight)
{
    m_boxWidth = boxWidth;
    m_height = height;
    m_lowHeight = lowHeight;
    invalidate();
}

bool CStripLayout::standsInOneRow(int width) const
{
    return width >= 3 * m_boxWidth + 2 * spacing();
}

int CStripLayout::heightFor(int width) const
{
    return standsInOneRow(width) ? m_height : m_height + spacing() + m_lowHeight;
}

int CStripLayout::leastWidth(int index) const
{
    return itemAt(index)->widget()->minimumSizeHint().width();
}

QSize CStripLayout::sizeHint() const
{
    return {3 * m_boxWidth + 2 * spacing(), m_height};
}

QSize CStripLayout::minimumSize() const
{
    return {qMin(leastWidth(First), m_boxWidth) + spacing() + qMin(leastWidth(Second), m_boxWidth), m_height};
}

void CStripLayout::setGeometry(const QRect &rect)
{
    // Of all layouts, not of the box: that would place the boxes itself.
    QLayout::setGeometry(rect); // NOLINT(bugprone-parent-virtual-call)
    if (count() <= Third)
        return;
    const bool oneRow = standsInOneRow(rect.width());
    int first = m_boxWidth, second = m_boxWidth;
    if (const int lacking = first + spacing() + second - rect.width(); lacking > 0) {
        // What is missing comes from the room that the texts leave.
        const int spareFirst = qMax(0, first - leastWidth(First));
        const int spareSecond = qMax(0, second - leastWidth(Second));
        const int fromFirst = spareFirst * lacking / qMax(1, spareFirst + spareSecond);
        first -= fromFirst;
        second -= lacking - fromFirst;
    }
    const int x = rect.left() + first + spacing();
    itemAt(First)->setGeometry({rect.left(), rect.top(), first, m_height});
    itemAt(Second)->setGeometry({x, rect.top(), second, m_height});
    const int left = x + second + spacing(), below = rect.top() + m_height + spacing();
    itemAt(Third)->setGeometry(oneRow ? QRect(left, rect.top(), rect.right() + 1 - left, m_height)
                                      : QRect(rect.left(), below, rect.width(), m_lowHeight));
}
