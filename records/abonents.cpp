#include "records/abonents.h"

namespace
{
struct Shape {
    const char *title;
    int width; // characters
};
constexpr Shape Columns[AbonentTable::ColumnCount] = {
    {"Наименование", 30}, {"Категория", 20}, {"Номер", 20}, {"Примечание", 60}};

template <class Item> QString wholeText(const Item &item)
{
    QStringList fields;
    for (int column = 0; column < AbonentTable::ColumnCount; ++column)
        fields << AbonentTable::text(item, column);
    return fields.join(QLatin1Char('|')); // which no field holds
}
} // namespace

int AbonentTable::columnWidth(int column)
{
    return column >= 0 && column < ColumnCount ? Columns[column].width : 0;
}

QVariant AbonentTable::headerData(int section, Qt::Orientation orientation, int role)
{
    const bool asked = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    if (!asked || section < 0 || section >= ColumnCount)
        return {};
    return QString::fromUtf8(Columns[section].title);
}

QString AbonentTable::text(const CAbonent &abonent, int column)
{
    switch (column) {
    case NameColumn: return abonent.name;
    case CategoryColumn: return abonent.category;
    case NumberColumn: return abonent.number;
    case NoteColumn: return abonent.note;
    }
    return {};
}

QString AbonentTable::text(const CAbonentList &list, int column)
{
    switch (column) {
    case NameColumn: return list.name;
    case NumberColumn: return list.numbers.join(QLatin1Char(','));
    case NoteColumn: return list.note;
    }
    return {};
}

QString keyOf(const CTableViewModelItem_Abonents &item)
{
    return wholeText(item);
}

QString keyOf(const CTableViewModelItem_AbonentLists &item)
{
    return wholeText(item);
}
