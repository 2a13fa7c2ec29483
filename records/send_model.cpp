#include "records/send_model.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"

#include <QDir>

#include <algorithm>

namespace
{
enum Column { FileName, Dash, Number, Trys, SendTime, Result };

bool isHeaderText(Qt::Orientation orientation, int role)
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole;
}
} // namespace

const CTableViewModelItem_Send::TableData CTableViewModelItem_Send::tableData[3] = {
    // by Procedure
    {20, 2, {17, 8}, {QStringLiteral("Файл"), QStringLiteral("-")}},
    {40,
     6,
     {17, 2, 9, 9, 16, 50},
     {QStringLiteral("Файл"), QStringLiteral("-"), QStringLiteral("Абонент"), QStringLiteral("Попыток"),
      QStringLiteral("Время начала"), QStringLiteral("Информация")}},
    {20, 2, {27, 8}, {QStringLiteral("Файл"), QStringLiteral("-")}},
};

const CTableViewModelItem_Send::TableData &CTableViewModelItem_Send::currentTable()
{
    const int mode = Options.processMode;
    return tableData[mode == CKS || mode == SKK ? mode : Direct];
}

bool CTableViewModelItem_Send::loadFromFile()
{
    return Load(State.pathOut() + QDir::separator() + fileName);
}

CTableViewModel_Send::CTableViewModel_Send(QObject *parent) : QAbstractListModel(parent) {}

int CTableViewModel_Send::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int CTableViewModel_Send::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : CTableViewModelItem_Send::currentTable().columns;
}

QVariant CTableViewModel_Send::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const CTableViewModelItem_Send &row = m_rows.at(index.row());
    if (role == Qt::UserRole)
        return row.fileName;
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case FileName: return row.fileName;
    case Number: return row.number;
    case Trys: return row.trys;
    case SendTime: return row.sendTime.toString(CTime::formatDD_MM_YYYY_HH_MM);
    case Result: return row.resultText;
    }
    return {};
}

QVariant CTableViewModel_Send::headerData(int section, Qt::Orientation orientation, int role) const
{
    const CTableViewModelItem_Send::TableData &table = CTableViewModelItem_Send::currentTable();
    if (!isHeaderText(orientation, role) || section < 0 || section >= table.columns)
        return {};
    return table.title[section];
}

QVariant CTableViewModel_SendBad::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == FileName && isHeaderText(orientation, role))
        return QStringLiteral("Неудачные");
    return CTableViewModel_Send::headerData(section, orientation, role);
}

void CTableViewModel_Send::clear()
{
    beginResetModel();
    m_rows.clear();
    m_rowsByName.clear();
    endResetModel();
}

void CTableViewModel_Send::populate(QList<CTableViewModelItem_Send> *items)
{
    beginResetModel();
    m_rows = *items;
    m_rowsByName.clear();
    endResetModel();
}

void CTableViewModel_Send::append(const CTableViewModelItem_Send &item)
{
    insertAt(m_rows.size(), item);
}

void CTableViewModel_Send::insertAt(int row, const CTableViewModelItem_Send &item)
{
    if (row < 0 || row > m_rows.size())
        return;
    const bool atEnd = row == m_rows.size();
    beginInsertRows({}, row, row);
    m_rows.insert(row, item);
    endInsertRows();
    if (!atEnd)
        m_rowsByName.clear();
    else if (!m_rowsByName.isEmpty()) // an empty one is built when it is asked for
        m_rowsByName.insert(item.fileName, row);
}

void CTableViewModel_Send::update(int row, const CTableViewModelItem_Send &item)
{
    if (row < 0 || row >= m_rows.size())
        return;
    if (m_rows.at(row).fileName != item.fileName)
        m_rowsByName.clear();
    m_rows[row] = item;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void CTableViewModel_Send::deleteRow(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    m_rowsByName.clear();
    endRemoveRows();
}

void CTableViewModel_Send::setChecked()
{
    for (CTableViewModelItem_Send &row : m_rows)
        row.checked = true;
}

bool CTableViewModel_Send::unCheckItem(const CTableViewModelItem_Send &item)
{
    const QList<int> rows = rowsOf(item.fileName);
    if (rows.isEmpty())
        return false;
    m_rows[rows.first()].checked = false;
    return true;
}

void CTableViewModel_Send::update(const CTableViewModelItem_Send &item)
{
    for (const int row : rowsOf(item.fileName))
        update(row, item);
}

void CTableViewModel_Send::deleteChecked()
{
    for (int row = m_rows.size() - 1; row >= 0; --row)
        if (m_rows.at(row).checked)
            deleteRow(row);
}

QList<int> CTableViewModel_Send::rowsOf(const QString &fileName)
{
    // A scan asks for each of its files twice; looking through all rows would square its cost.
    if (m_rowsByName.isEmpty())
        for (int row = 0; row < m_rows.size(); ++row)
            m_rowsByName.insert(m_rows.at(row).fileName, row);
    QList<int> rows = m_rowsByName.values(fileName);
    std::sort(rows.begin(), rows.end());
    return rows;
}
