#include "ui/widgets/file_table.h"

#include "text/utils.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QToolTip>

namespace
{
bool isStep(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}
} // namespace

CFileTable::CFileTable(QWidget *parent) : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    horizontalHeader()->setHighlightSections(false); // with whole rows selected, all would stand out
    verticalHeader()->hide();
}

// With what a cell keeps free beside its text and the line to the next one. The letters in a name make it a
// little wider than as many figures.
int CFileTable::widthOf(int characters, const QFont &font)
{
    const int margin = QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    const int letters = CUtils::txtGUIWidth(1, font) / 2;
    return CUtils::txtGUIWidth(characters, font) + letters + 2 * margin + 1;
}

int CFileTable::selectedRow() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

bool CFileTable::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex cell = indexAt(help->pos());
    const bool isCut = cell.isValid() && sizeHintForIndex(cell).width() > columnWidth(cell.column());
    // A file may have any name: none of it is taken for marks of rich text.
    const QString text = QStringLiteral("<p style='white-space:pre'>%1</p>");
    QToolTip::showText(help->globalPos(),
                       isCut ? text.arg(cell.data().toString().toHtmlEscaped()) : QString(), viewport());
    return true;
}

// Where a row has gone, its neighbour is current but not selected: a step selects it, and Home and End must
// reach it, too.
void CFileTable::keyPressEvent(QKeyEvent *event)
{
    if (selectedRow() < 0 && currentIndex().isValid()) {
        if (isStep(event->key()))
            return selectRow(currentIndex().row());
        if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)
            selectionModel()->clearCurrentIndex();
    }
    QTableView::keyPressEvent(event);
}

QModelIndex CFileTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int column = qMax(0, currentIndex().column());
    if (action == MoveHome)
        return model()->index(0, column);
    if (action == MoveEnd)
        return model()->index(model()->rowCount() - 1, column);
    return QTableView::moveCursor(action, modifiers);
}

// The view would select the neighbour of a current row that goes, had the neighbour not become current
// before.
void CFileTable::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    const int current = currentIndex().row();
    if (current >= first && current <= last) {
        const int neighbour = last + 1 < model()->rowCount() ? last + 1 : first - 1;
        selectionModel()->setCurrentIndex(model()->index(neighbour, currentIndex().column()),
                                          QItemSelectionModel::NoUpdate);
    }
    QTableView::rowsAboutToBeRemoved(parent, first, last);
}
