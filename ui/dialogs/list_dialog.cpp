#include "ui/dialogs/list_dialog.h"

#include "app/ask.h"
#include "app/state.h"
#include "text/utils.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTableWidget>

namespace
{
constexpr int WidestColumn = 30;   // characters
constexpr int NarrowestColumn = 8; // so that an empty one can be typed into
constexpr int RowMargin = 5;       // above and below the letters of a row

QTableWidget *newTable(const CListDialog::Shape &shape)
{
    auto *table = new QTableWidget(0, shape.columns.size());
    table->setObjectName(QString::fromLatin1(shape.name));
    for (int column = 0; column < shape.columns.size(); ++column)
        table->setHorizontalHeaderItem(column, new QTableWidgetItem(shape.columns.at(column).title));
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 2 * RowMargin);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    return table;
}

QLabel *newMessage()
{
    auto *label = new QLabel;
    label->setObjectName(QStringLiteral("message"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumHeight(label->fontMetrics().lineSpacing()); // the table stays where it is
    QPalette red = label->palette();
    red.setColor(QPalette::WindowText, Qt::darkRed);
    label->setPalette(red);
    return label;
}

QCheckBox *newEditingBox()
{
    auto *box = new QCheckBox(QStringLiteral("Разрешить редактирование"));
    box->setObjectName(QStringLiteral("editing"));
    return box;
}

/// A button's own shortcut would press it a moment later, when the next keys are already in the former row.
void giveKey(QPushButton *button, const QKeySequence &key, QTableWidget *table, Qt::ShortcutContext context)
{
    button->setToolTip(key.toString(QKeySequence::NativeText));
    auto *shortcut = new QShortcut(key, table, nullptr, nullptr, context);
    QObject::connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
}

bool isEmpty(const QStringList &record)
{
    return record.join(QString()).isEmpty();
}
} // namespace

CListDialog::CListDialog(const Shape &shape, QWidget *parent)
    : CDialog(parent), m_table(newTable(shape)), m_heading(shape.heading), m_question(shape.question),
      m_cell(new CListCell(shape.columns, this)), m_message(newMessage()), m_editing(newEditingBox()),
      m_add(newButton("addRow", QStringLiteral("Добавить строку"))),
      m_remove(newButton("removeRow", QStringLiteral("Удалить строку")))
{
    setWindowTitle(shape.heading);
    m_table->setItemDelegate(m_cell);
    m_table->installEventFilter(this);
    giveKey(m_add, Qt::Key_Insert, m_table, Qt::WindowShortcut);
    // In a cell it deletes a word.
    giveKey(m_remove, QKeySequence(QStringLiteral("Ctrl+Del")), m_table, Qt::WidgetShortcut);
}

// A cell that is still open gives its text to the table when it goes, which is after this dialog.
CListDialog::~CListDialog()
{
    m_table->disconnect(this);
    m_cell->disconnect(this);
}

void CListDialog::build(const QList<QStringList> &records, QPushButton *select)
{
    QPushButton *close = newButton("close", QStringLiteral("Закрыть"));
    close->setDefault(select == nullptr);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_table, 1);
    rows->addWidget(m_message);
    rows->addWidget(newFlowRow({m_editing, m_add, m_remove}));
    rows->addLayout(select != nullptr ? newButtonRow({select}, {close}) : newButtonRow({}, {close}));
    orderTabs({m_table, m_editing, m_add, m_remove, select, close});

    fill(records);
    fitColumns();
    connect(m_table, &QTableWidget::cellChanged, this, &CListDialog::cellChanged);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &CListDialog::selectionChanged);
    connect(m_table, &QTableWidget::currentCellChanged, this, &CListDialog::selectionChanged);
    connect(m_cell, &CListCell::told, this, &CListDialog::tell);
    connect(m_editing, &QCheckBox::stateChanged, this, &CListDialog::editingStateChanged);
    connect(m_add, &QPushButton::clicked, this, &CListDialog::addRow);
    connect(m_remove, &QPushButton::clicked, this, &CListDialog::removeRow);
    connect(close, &QPushButton::clicked, this, &CListDialog::slotApply);
    editingStateChanged(m_editing->checkState());
}

void CListDialog::fill(const QList<QStringList> &records)
{
    m_table->setRowCount(records.size());
    for (int row = 0; row < records.size(); ++row)
        for (int column = 0; column < m_table->columnCount(); ++column)
            m_table->setItem(row, column, new QTableWidgetItem(records.at(row).value(column)));
}

// As wide as what stands there, so that the number is seen beside the name in large letters too.
void CListDialog::fitColumns()
{
    m_table->resizeColumnsToContents();
    const int narrowest = CUtils::txtGUIWidth(NarrowestColumn, m_table->font());
    const int widest = CUtils::txtGUIWidth(WidestColumn, m_table->font());
    const QHeaderView *header = m_table->horizontalHeader();
    for (int column = 0; column < m_table->columnCount(); ++column) {
        const int least = qMax(narrowest, header->sectionSizeHint(column));
        m_table->setColumnWidth(column, qMax(least, qMin(m_table->columnWidth(column), widest)));
    }
    const int most = QGuiApplication::primaryScreen()->availableSize().width() * 9 / 10;
    const int spare = m_table->fontMetrics().height(); // buttons grow a little when they are shown
    const int wanted = qMax(sizeHint().width(), header->length()) + spare;
    resize(qMin(most, qMax(600, wanted)), 400);
}

QList<QStringList> CListDialog::records() const
{
    QList<QStringList> all;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        QStringList record;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            const QTableWidgetItem *item = m_table->item(row, column);
            record << (item != nullptr ? item->text() : QString());
        }
        if (!isEmpty(record))
            all << record;
    }
    return all;
}

void CListDialog::cellChanged(int, int)
{
    changed = true;
}

// The row that the buttons act on is always the one that stands out.
void CListDialog::selectionChanged()
{
    const int row = m_table->currentRow();
    if (row >= 0 && !m_table->selectionModel()->isRowSelected(row, QModelIndex()))
        m_table->selectRow(row);
    m_remove->setEnabled(m_editing->isChecked() && row >= 0);
}

void CListDialog::addRow()
{
    finishEditing();
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    for (int column = 0; column < m_table->columnCount(); ++column)
        m_table->setItem(row, column, new QTableWidgetItem);
    changed = true;
    m_table->setCurrentCell(row, 0);
    m_table->editItem(m_table->item(row, 0));
}

void CListDialog::removeRow()
{
    finishEditing();
    if (m_table->currentRow() < 0)
        return;
    m_table->removeRow(m_table->currentRow());
    changed = true;
    selectionChanged();
}

void CListDialog::editingStateChanged(int state)
{
    const bool allowed = state == Qt::Checked;
    if (!allowed)
        finishEditing();
    m_table->setEditTriggers(allowed ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                           QAbstractItemView::AnyKeyPressed
                                     : QAbstractItemView::NoEditTriggers);
    m_add->setEnabled(allowed);
    selectionChanged();
}

void CListDialog::askForSave()
{
    const bool keeps = State.closeAllowed ||
                       ask(this, m_question, QStringLiteral("Сохранить изменения?")) == QMessageBox::Yes ||
                       State.closeAllowed; // the program has closed the question, and maybe this dialog
    if (keeps && changed)
        keep(records());
    changed = false;
}

void CListDialog::slotApply()
{
    reject();
}

// Esc, the cross of the frame and the program's end come here as well.
void CListDialog::reject()
{
    finishEditing();
    if (changed)
        askForSave();
    CDialog::reject();
}

void CListDialog::tell(const QString &text)
{
    m_message->setText(text);
}

// While the table can be edited, Enter goes to the cell: a second one after an edit must not end the dialog.
bool CListDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_table || event->type() != QEvent::KeyPress || m_cell->isOpen())
        return CDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool opens = (key == Qt::Key_Return || key == Qt::Key_Enter) && m_editing->isChecked();
    QTableWidgetItem *item = opens ? m_table->currentItem() : nullptr;
    if (item == nullptr)
        return CDialog::eventFilter(watched, event);
    m_table->editItem(item);
    return true;
}
