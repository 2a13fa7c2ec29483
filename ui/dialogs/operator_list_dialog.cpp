#include "ui/dialogs/operator_list_dialog.h"

#include "app/options.h"

namespace
{
QList<QStringList> recordsOf(const QStringList &operators)
{
    QList<QStringList> records;
    for (const QString &name : operators)
        records << QStringList{name};
    return records;
}
} // namespace

COperatorListDialog::COperatorListDialog(QWidget *parent)
    : CListDialog({"operators",
                   QStringLiteral("Операторы"),
                   QStringLiteral("Velda/Список операторов"),
                   {{QStringLiteral("Оператор"), QString(), QString()}}},
                  parent)
{
    build(recordsOf(Options.listOperators), nullptr);
}

void COperatorListDialog::keep(const QList<QStringList> &records)
{
    Options.listOperators.clear();
    for (const QStringList &record : records)
        Options.listOperators << record.first();
}
