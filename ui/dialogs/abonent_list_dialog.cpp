#include "ui/dialogs/abonent_list_dialog.h"

#include "app/options.h"
#include "text/utils.h"
#include "ui/widgets/layouts.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>

namespace
{
enum Column { NameColumn, CategoryColumn, NumberColumn, NoteColumn, ColumnCount };
constexpr int WidestColumn = 30; // characters

QTableWidget *newTable()
{
    auto *table = new QTableWidget(0, ColumnCount);
    table->setObjectName(QStringLiteral("abonents"));
    table->setHorizontalHeaderLabels({QStringLiteral("Наименование"), QStringLiteral("Категория"),
                                      QStringLiteral("Номер"), QStringLiteral("Примечание")});
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    return table;
}
} // namespace

CAbonentListDialog::CAbonentListDialog(QWidget *parent) : CDialog(parent), m_table(newTable())
{
    setWindowTitle(QStringLiteral("Абоненты"));
    QPushButton *select = newDefaultButton("select", QStringLiteral("Выбрать абонента"));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_table);
    rows->addLayout(newButtonRow({select}, {newLeaveButton("close", QStringLiteral("Закрыть"))}));
    fill();
    connect(select, &QPushButton::clicked, this, &CAbonentListDialog::slotSelect);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &CAbonentListDialog::cellDoubleClicked);
    const int most = QGuiApplication::primaryScreen()->availableSize().width() * 9 / 10;
    resize(qMin(most, qMax(600, m_table->horizontalHeader()->length() + m_table->fontMetrics().height())),
           400);
}

void CAbonentListDialog::fill()
{
    m_table->setRowCount(Options.abonents.size());
    for (int row = 0; row < Options.abonents.size(); ++row) {
        const CAbonent &abonent = Options.abonents.at(row);
        const QString fields[] = {abonent.name, abonent.category, abonent.number, abonent.note};
        for (int column = 0; column < ColumnCount; ++column)
            m_table->setItem(row, column, new QTableWidgetItem(fields[column]));
    }
    // As wide as what stands there, so that the number is seen beside the name in large letters too.
    m_table->resizeColumnsToContents();
    const int widest = CUtils::txtGUIWidth(WidestColumn, m_table->font());
    for (int column = 0; column < ColumnCount; ++column)
        m_table->setColumnWidth(column, qMin(m_table->columnWidth(column), widest));
}

void CAbonentListDialog::slotSelect()
{
    const QTableWidgetItem *item = m_table->item(m_table->currentRow(), NumberColumn);
    if (item == nullptr)
        return;
    selected = item->text();
    done(Accepted);
}

void CAbonentListDialog::cellDoubleClicked(int, int)
{
    if (selectMode)
        slotSelect();
}
