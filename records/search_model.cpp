#include "records/search_model.h"

#include "app/clock.h"
#include "records/protocol.h"

#include <QDir>

namespace
{
enum Column { DateColumn, TimeColumn, EmptyColumn, FileColumn, ColumnCount };

struct Shape {
    const char *title;
    int width; // characters
};
constexpr Shape Columns[ColumnCount] = {{"Дата", 10}, {"Время", 8}, {"", 6}, {"Файл", 16}};
} // namespace

int CTableViewModel_SearchResult::columnWidth(int column)
{
    return column >= 0 && column < ColumnCount ? Columns[column].width : 0;
}

int CTableViewModel_SearchResult::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CTableViewModel_SearchResult::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const CTableViewModelItem_SearchResult &row = m_rows.at(index.row());
    if (role == Qt::UserRole)
        return row.fileName;
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case DateColumn: return row.date.toString(CTime::formatDD_MM_YYYY);
    case TimeColumn: return row.time.toString(QStringLiteral("hh:mm:ss"));
    case FileColumn: return shownName(row.fileName);
    }
    return {};
}

QVariant CTableViewModel_SearchResult::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool asked = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    if (!asked || section < 0 || section >= ColumnCount)
        return {};
    return QString::fromUtf8(Columns[section].title);
}

QString CTableViewModel_SearchResult::pathAt(int row) const
{
    const CTableViewModelItem_SearchResult &item = m_rows.at(row);
    return item.dirPath + QDir::separator() + item.fileName;
}
