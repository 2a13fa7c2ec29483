#include "records/send_model.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"

#include <QDir>

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
