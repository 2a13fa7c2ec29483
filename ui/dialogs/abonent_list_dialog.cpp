#include "ui/dialogs/abonent_list_dialog.h"

#include "app/options.h"

namespace
{
constexpr int NumberColumn = 2;

QList<QStringList> recordsOf(const QList<CAbonent> &abonents)
{
    QList<QStringList> records;
    for (const CAbonent &one : abonents)
        records << QStringList{one.name, one.category, one.number, one.note};
    return records;
}
} // namespace

CAbonentListDialog::CAbonentListDialog(QWidget *parent)
    : CPickListDialog({"abonents",
                       QStringLiteral("Абоненты"),
                       QStringLiteral("Velda/Список абонентов"),
                       {column(QStringLiteral("Наименование")),
                        column(QStringLiteral("Категория")),
                        {QStringLiteral("Номер"), QStringLiteral("|,"),
                         QStringLiteral("Знаки \",\" и \"|\" недопустимы: у абонента один номер.")},
                        column(QStringLiteral("Примечание"))}},
                      NumberColumn, parent)
{
    build(recordsOf(Options.abonents), QStringLiteral("Выбрать абонента"));
}

void CAbonentListDialog::keep(const QList<QStringList> &records)
{
    Options.abonents.clear();
    for (const QStringList &record : records)
        Options.abonents << CAbonent{record.at(0), record.at(1), record.at(2), record.at(3)};
}
