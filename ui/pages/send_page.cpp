#include "ui/pages/send_page.h"

#include "records/send_model.h"
#include "text/utils.h"
#include "ui/widgets/layouts.h"

#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QTableView>
#include <QTimer>

namespace
{
constexpr int RowMargin = 5; ///< above and below the letters of a row

int rowHeight(const QFont &font)
{
    return QFontMetrics(font).height() + 2 * RowMargin;
}

QTableView *newTable(QAbstractItemModel &model, const char *name, const QFont &font)
{
    auto *table = new QTableView;
    table->setObjectName(QString::fromLatin1(name));
    table->setModel(&model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->verticalHeader()->hide();
    const CTableViewModelItem_Send::TableData &shape = CTableViewModelItem_Send::currentTable();
    for (int column = 0; column < shape.columns; ++column)
        table->setColumnWidth(column, CUtils::txtGUIWidth(shape.columnWidth[column], font));
    table->verticalHeader()->setDefaultSectionSize(rowHeight(font));
    return table;
}
} // namespace

CSendPage::CSendPage(CTableViewModel_Send &waiting, CTableViewModel_SendBad &failed, QWidget *parent)
    : QWidget(parent), tableSend(newTable(waiting, "tableSend", font())),
      tableSendBad(newTable(failed, "tableSendBad", font())), m_tableFont(font())
{
    setObjectName(QStringLiteral("tabSend"));
    tableSendBad->hide();
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(tableSend, 1);
    rows->addWidget(tableSendBad, 1);
}

void CSendPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The tables are sized once they have taken the new font as well.
    if (event->type() == QEvent::FontChange)
        QTimer::singleShot(0, this, &CSendPage::sizeTables);
}

// A column that the operator has drawn wider keeps its proportion.
void CSendPage::sizeTables()
{
    const CTableViewModelItem_Send::TableData &shape = CTableViewModelItem_Send::currentTable();
    for (QTableView *table : {tableSend, tableSendBad}) {
        table->horizontalHeader()->setFont(font());
        table->verticalHeader()->setDefaultSectionSize(rowHeight(font()));
        for (int column = 0; column < shape.columns; ++column) {
            const int former = CUtils::txtGUIWidth(shape.columnWidth[column], m_tableFont);
            const int wanted = CUtils::txtGUIWidth(shape.columnWidth[column], font());
            table->setColumnWidth(column, table->columnWidth(column) * wanted / qMax(1, former));
        }
    }
    m_tableFont = font();
}
