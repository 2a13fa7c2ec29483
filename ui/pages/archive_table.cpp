#include "ui/pages/archive_table.h"

#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>

namespace
{
constexpr int RowMargin = 5; ///< above and below the letters of a row

int heightOfRow(const QFont &font)
{
    return QFontMetrics(font).height() + 2 * RowMargin;
}
} // namespace

CArchiveTable::CArchiveTable(QAbstractItemModel &model, const QList<int> &widths, const char *name)
    : m_widths(widths)
{
    setObjectName(QString::fromLatin1(name));
    setModel(&model);
    verticalHeader()->setDefaultSectionSize(heightOfRow(font()));
    for (int column = 0; column < m_widths.size(); ++column) {
        m_usual << widthOf(m_widths.at(column), font());
        setColumnWidth(column, m_usual.at(column));
    }
}

QSize CArchiveTable::sizeHint() const
{
    const int bar = verticalScrollBar()->sizeHint().width();
    return {horizontalHeader()->length() + bar + 2 * frameWidth(), CFileTable::sizeHint().height()};
}

void CArchiveTable::changeEvent(QEvent *event)
{
    CFileTable::changeEvent(event);
    // The columns are sized once their header has taken the new font as well.
    if (event->type() == QEvent::FontChange)
        QTimer::singleShot(0, this, &CArchiveTable::followFont);
}

void CArchiveTable::followFont()
{
    horizontalHeader()->setFont(font());
    verticalHeader()->setDefaultSectionSize(heightOfRow(font()));
    for (int column = 0; column < m_widths.size(); ++column) {
        const int wanted = widthOf(m_widths.at(column), font());
        setColumnWidth(column, columnWidth(column) * wanted / qMax(1, m_usual.at(column)));
        m_usual[column] = wanted;
    }
    updateGeometry();
}

void CArchiveTable::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return emit enterPressed();
    CFileTable::keyPressEvent(event);
}

void CArchiveTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    CFileTable::selectionChanged(selected, deselected);
    if (!selected.isEmpty())
        emit rowChosen();
}
