#include "ui/pages/send_page.h"

#include "records/send_model.h"
#include "ui/widgets/file_table.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/telegram_view.h"

#include <QAction>
#include <QCheckBox>
#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

namespace
{
constexpr int RowMargin = 5; ///< above and below the letters of a row
constexpr int ButtonSpacing = 2;

int rowHeight(const QFont &font)
{
    return QFontMetrics(font).height() + 2 * RowMargin;
}

template <class Control> Control *named(Control *control, const char *name)
{
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

CFileTable *newTable(QAbstractItemModel &model, const char *name, const QFont &font)
{
    auto *table = named(new CFileTable, name);
    table->setModel(&model);
    table->horizontalHeader()->setMinimumSectionSize(1); // the style's is wider than two characters
    const CTableViewModelItem_Send::TableData &shape = CTableViewModelItem_Send::currentTable();
    for (int column = 0; column < shape.columns; ++column)
        table->setColumnWidth(column, CFileTable::widthOf(shape.columnWidth[column], font));
    table->verticalHeader()->setDefaultSectionSize(rowHeight(font));
    return table;
}

QPushButton *newButton(const QString &words, const char *name)
{
    auto *button = named(new QPushButton(words), name);
    button->setEnabled(false);
    return button;
}
} // namespace

CSendPage::CSendPage(CTableViewModel_Send &waiting, CTableViewModel_SendBad &failed, QWidget *parent)
    : QWidget(parent), tableSend(newTable(waiting, "tableSend", font())),
      tableSendBad(newTable(failed, "tableSendBad", font())),
      registers(named(new QCheckBox(QStringLiteral("Показать регистры")), "sendRegisters")),
      text(named(new CTelegramView, "sendText")),
      toEditor(newButton(QStringLiteral("В редактор"), "sendToEditorButton")),
      remove(newButton(QStringLiteral("Удалить"), "sendDeleteButton")),
      reSend(newButton(QStringLiteral("Повторить передачу"), "sendReSendButton")),
      changeNumber(newAction(QStringLiteral("Изменить номер абонента"), "sendChangeNumber")),
      resetTime(newAction(QStringLiteral("Изменить время отправки на сейчас"), "sendResetTime")),
      reSendAction(newAction(QStringLiteral("Повторить передачу"), "sendReSend")),
      pause(newAction(QStringLiteral("Остановить"), "sendPause")), m_tableFont(font())
{
    setObjectName(QStringLiteral("tabSend"));
    tableSendBad->hide();
    for (CFileTable *table : {tableSend, tableSendBad})
        prepareTable(table);
    text->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(text, &QWidget::customContextMenuRequested, this, &CSendPage::popUpForText);
    placeRows();
}

QAction *CSendPage::newAction(const QString &words, const char *name)
{
    auto *action = named(new QAction(words, this), name);
    action->setEnabled(false);
    return action;
}

void CSendPage::prepareTable(CFileTable *table)
{
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QWidget::customContextMenuRequested, this,
            [this, table](const QPoint &point) { popUpForRow(table, point); });
    connect(table, &QAbstractItemView::activated, text, [this] { text->setFocus(); });
}

void CSendPage::placeRows()
{
    auto *buttons = new CFlowLayout(0, ButtonSpacing);
    for (QPushButton *button : {toEditor, remove, reSend})
        buttons->addWidget(button);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(tableSend, 3);
    rows->addWidget(tableSendBad, 2);
    rows->addWidget(registers, 0, Qt::AlignLeft);
    rows->addWidget(text, 4);
    rows->addLayout(buttons);
}

void CSendPage::popUpForRow(const CFileTable *table, const QPoint &point)
{
    if (table->selectedRow() < 0)
        return;
    popUp(new QMenu(this), table->viewport()->mapToGlobal(point));
}

void CSendPage::popUpForText(const QPoint &point)
{
    QMenu *menu = text->createStandardContextMenu();
    menu->addSeparator();
    popUp(menu, text->mapToGlobal(point));
}

// An entry may open a dialog, in whose loop its menu must not be deleted: the next one does so.
void CSendPage::popUp(QMenu *menu, const QPoint &globalPoint)
{
    delete m_menu;
    m_menu = menu;
    menu->setObjectName(QStringLiteral("sendMenu"));
    menu->addActions({changeNumber, resetTime, reSendAction, pause});
    connect(menu, &QMenu::aboutToHide, this, &CSendPage::menuClosed);
    emit menuOpened();
    menu->popup(globalPoint);
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
    for (CFileTable *table : {tableSend, tableSendBad}) {
        table->horizontalHeader()->setFont(font());
        table->verticalHeader()->setDefaultSectionSize(rowHeight(font()));
        for (int column = 0; column < shape.columns; ++column) {
            const int former = CFileTable::widthOf(shape.columnWidth[column], m_tableFont);
            const int wanted = CFileTable::widthOf(shape.columnWidth[column], font());
            table->setColumnWidth(column, table->columnWidth(column) * wanted / qMax(1, former));
        }
    }
    m_tableFont = font();
}
