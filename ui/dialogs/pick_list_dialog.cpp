#include "ui/dialogs/pick_list_dialog.h"

#include "procedures/utils_skk.h"
#include "records/protocol.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

CPickListDialog::CPickListDialog(const Shape &shape, int numberColumn, QWidget *parent)
    : CListDialog(shape, parent), m_numberColumn(numberColumn)
{
}

ListColumn CPickListDialog::column(const QString &title)
{
    return {title, QStringLiteral("|"), QStringLiteral("Знак \"|\" недопустим: он разделяет поля записи.")};
}

void CPickListDialog::build(const QList<QStringList> &records, const QString &label)
{
    QPushButton *select = newDefaultButton("select", label);
    CListDialog::build(records, select);
    connect(select, &QPushButton::clicked, this, &CPickListDialog::slotSelect);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &CPickListDialog::cellDoubleClicked);
    connect(m_table, &QTableWidget::itemChanged, this, &CPickListDialog::itemChanged);
}

const QTableWidgetItem *CPickListDialog::currentNumber() const
{
    return m_table->item(m_table->currentRow(), m_numberColumn);
}

void CPickListDialog::slotSelect()
{
    finishEditing();
    const QTableWidgetItem *item = currentNumber();
    if (item == nullptr)
        return;
    selected = item->text();
    if (changed)
        askForSave();
    done(Accepted);
}

void CPickListDialog::cellDoubleClicked(int, int)
{
    const QTableWidgetItem *item = selectMode ? currentNumber() : nullptr;
    if (item == nullptr)
        return;
    selected = item->text();
    if (changed)
        Log.addCacheServiceString(m_heading + QStringLiteral(": изменения не сохранены"), ProtocolInfo, true);
    done(Accepted);
}

void CPickListDialog::itemChanged(QTableWidgetItem *item)
{
    if (item->column() != m_numberColumn)
        return;
    const QString typed = item->text();
    QString number;
    CUtilsSKK::checkCallNumber(typed, number);
    if (number == typed)
        return;
    // A second look would count without what the first one has dropped, and might drop a comma more.
    const QSignalBlocker quiet(m_table);
    item->setText(number);
    tell(QStringLiteral("Вместо \"%1\" записано \"%2\": в номере остаются цифры и \"+\", "
                        "а запятая - только за номером длиннее 5 знаков.")
             .arg(typed, number));
}
