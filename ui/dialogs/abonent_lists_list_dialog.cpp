#include "ui/dialogs/abonent_lists_list_dialog.h"

#include "app/options.h"

namespace
{
constexpr int NumberColumn = 1;

QList<QStringList> recordsOf(const QList<CAbonentList> &lists)
{
    QList<QStringList> records;
    for (const CAbonentList &list : lists)
        records << QStringList{list.name, list.numbers.join(QLatin1Char(',')), list.note};
    return records;
}
} // namespace

CAbonentListsListDialog::CAbonentListsListDialog(QWidget *parent)
    : CPickListDialog(
          {"abonentLists",
           QStringLiteral("Списки Абонентов"),
           QStringLiteral("Velda/Списки абонентов"),
           {column(QStringLiteral("Наименование")), column(QStringLiteral("Номера абонентов, через запятую")),
            column(QStringLiteral("Примечание"))}},
          NumberColumn, parent)
{
    build(recordsOf(Options.abonentLists), QStringLiteral("Выбрать список"));
}

void CAbonentListsListDialog::keep(const QList<QStringList> &records)
{
    Options.abonentLists.clear();
    for (const QStringList &record : records)
        Options.abonentLists << CAbonentList{
            record.at(0), record.at(1).split(QLatin1Char(','), Qt::SkipEmptyParts), record.at(2)};
}
