// Chapter of FormMain: the tab of what waits to go out, and the scan that fills it.

#include "app/state.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/widgets/layouts.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QTableView>

namespace
{
constexpr int RowMargin = 5; ///< above and below the letters of a row

int rowHeight(const QFont &font)
{
    return QFontMetrics(font).height() + 2 * RowMargin;
}
} // namespace

void FormMain::buildSendTab()
{
    sendTableFont = font();
    auto *rows = new QVBoxLayoutMS(tabSend);
    tableSend = newSendTable(modelSend, QStringLiteral("tableSend"));
    tableSendBad = newSendTable(modelSendBad, QStringLiteral("tableSendBad"));
    tableSendBad->hide();
    rows->addWidget(tableSend, 1);
    rows->addWidget(tableSendBad, 1);
}

QTableView *FormMain::newSendTable(CTableViewModel_Send &model, const QString &name)
{
    auto *table = new QTableView;
    table->setObjectName(name);
    table->setModel(&model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->verticalHeader()->hide();
    const CTableViewModelItem_Send::TableData &shape = CTableViewModelItem_Send::currentTable();
    for (int column = 0; column < shape.columns; ++column)
        table->setColumnWidth(column, CUtils::txtGUIWidth(shape.columnWidth[column], font()));
    table->verticalHeader()->setDefaultSectionSize(rowHeight(font()));
    return table;
}

// A column that the operator has drawn wider keeps its proportion.
void FormMain::sizeSendTables()
{
    const CTableViewModelItem_Send::TableData &shape = CTableViewModelItem_Send::currentTable();
    for (QTableView *table : {tableSend, tableSendBad}) {
        table->horizontalHeader()->setFont(font());
        table->verticalHeader()->setDefaultSectionSize(rowHeight(font()));
        for (int column = 0; column < shape.columns; ++column) {
            const int former = CUtils::txtGUIWidth(shape.columnWidth[column], sendTableFont);
            const int wanted = CUtils::txtGUIWidth(shape.columnWidth[column], font());
            table->setColumnWidth(column, table->columnWidth(column) * wanted / qMax(1, former));
        }
    }
    sendTableFont = font();
}

void FormMain::scanDir()
{
    if (sendMenuOpen)
        return;
    State.scanFoundCount = applySendQueue(scanSendQueue(), modelSend, modelSendBad);
    tableSendBad->setVisible(modelSendBad.rowCount() > 0);
}
