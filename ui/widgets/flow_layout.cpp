#include "ui/widgets/flow_layout.h"

#include <QStyle>
#include <QWidget>

#include <utility>

CFlowLayout::CFlowLayout(int margin, int spacing, QWidget *parent) : QLayout(parent)
{
    setContentsMargins(margin, margin, margin, margin);
    setSpacing(spacing);
}

CFlowLayout::~CFlowLayout()
{
    qDeleteAll(m_items);
}

void CFlowLayout::addItem(QLayoutItem *item)
{
    m_items.append(item);
}

int CFlowLayout::count() const
{
    return m_items.size();
}

QLayoutItem *CFlowLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem *CFlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

QSize CFlowLayout::withMargins(const QSize &size) const
{
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize CFlowLayout::sizeHint() const
{
    QSize size;
    for (const QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize wish = item->sizeHint();
        size = {size.width() + wish.width() + (size.width() > 0 ? spacing() : 0),
                qMax(size.height(), wish.height())};
    }
    return withMargins(size);
}

QSize CFlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *item : m_items)
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    return withMargins(size);
}

int CFlowLayout::heightForWidth(int width) const
{
    return flow(QRect(0, 0, width, 0), false);
}

void CFlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    flow(rect, true);
}

int CFlowLayout::flow(const QRect &rect, bool place) const
{
    const QRect room = rect.marginsRemoved(contentsMargins());
    QList<QLayoutItem *> row;
    int x = 0, y = 0, height = 0;
    const auto finishRow = [&] {
        if (place)
            placeRow(row, {room.left(), room.top() + y}, height, room.width());
        row.clear();
    };
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize wish = item->sizeHint();
        if (!row.isEmpty() && x + wish.width() > room.width()) {
            finishRow();
            y += height + spacing();
            x = height = 0;
        }
        row.append(item);
        x += wish.width() + spacing();
        height = qMax(height, wish.height());
    }
    finishRow();
    return y + height + rect.height() - room.height();
}

/// What \a row leaves of \a width.
int CFlowLayout::leftOver(const QList<QLayoutItem *> &row, int width) const
{
    for (const QLayoutItem *item : row)
        width -= item->sizeHint().width() + spacing();
    return qMax(0, width + spacing());
}

// Items of one row stand on one middle line; an item wider than the room is narrowed to it.
void CFlowLayout::placeRow(const QList<QLayoutItem *> &row, QPoint at, int height, int width) const
{
    const Qt::LayoutDirection direction =
        parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    const QRect whole(at, QSize(width, height));
    int spare = m_fillsRows ? leftOver(row, width) : 0;
    for (QLayoutItem *item : row) {
        QSize size = item->sizeHint().boundedTo({qMax(width, item->minimumSize().width()), height});
        if (item->expandingDirections().testFlag(Qt::Horizontal))
            size.rwidth() += std::exchange(spare, 0);
        const QRect place(QPoint(at.x(), at.y() + (height - size.height()) / 2), size);
        item->setGeometry(QStyle::visualRect(direction, whole, place));
        at.rx() += size.width() + spacing();
    }
}

QWidget *newFlowRow(const QList<QWidget *> &controls)
{
    constexpr int Spacing = 4;
    auto *row = new QWidget;
    auto *line = new CFlowLayout(0, Spacing, row);
    for (QWidget *control : controls)
        if (control != nullptr)
            line->addWidget(control);
    return row;
}
