// Chapter of FormMain: the tab of what waits to go out, and the scan that fills it.

#include "app/state.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/layouts.h"

#include <QHeaderView>
#include <QTableView>

void FormMain::buildSendTab()
{
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
    return table;
}

void FormMain::scanDir()
{
    if (sendMenuOpen)
        return;
    State.scanFoundCount = applySendQueue(scanSendQueue(), modelSend, modelSendBad);
    tableSendBad->setVisible(modelSendBad.rowCount() > 0);
}
