#include "ui/pages/archive_page.h"

#include "records/io_model.h"
#include "records/search_model.h"
#include "ui/pages/archive_table.h"
#include "ui/widgets/date_picker.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/telegram_view.h"

#include <QCheckBox>
#include <QEvent>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>

namespace
{
struct Names {
    const char *page, *date, *table;
    const char *prefix; ///< of the names of all other controls
};
const Names names[] = {
    // by CArchivePage::Kind
    {"tabInput", "dateInput", "tableInput", "input"},
    {"tabOutput", "dateOutput", "tableOutput", "output"},
    {"searchFound", "", "tableSearch", "search"},
};

QList<int> columnWidths(CArchivePage::Kind kind, const QAbstractItemModel &model)
{
    const auto width = kind == CArchivePage::Found ? &CTableViewModel_SearchResult::columnWidth
                                                   : &CTableViewModelItem_IO::columnWidth;
    QList<int> widths;
    for (int column = 0; column < model.columnCount(); ++column)
        widths << width(column);
    return widths;
}

template <class Control> Control *named(CArchivePage::Kind kind, const char *name, Control *control)
{
    control->setObjectName(QString::fromLatin1(names[kind].prefix) + QLatin1String(name));
    return control;
}

/// Of a page that is a part of another one.
QVBoxLayout *newRowsWithin(QWidget *page)
{
    auto *rows = new QVBoxLayoutMS(page);
    rows->setContentsMargins(0, 0, 0, 0);
    return rows;
}
} // namespace

CArchivePage::CArchivePage(Kind kind, QAbstractItemModel &model, const QDate &today, QWidget *parent)
    : QWidget(parent),
      registers(named(kind, "Registers", new QCheckBox(QStringLiteral("Показать регистры")))),
      table(new CArchiveTable(model, columnWidths(kind, model), names[kind].table)),
      text(named(kind, "Text", new CTelegramView)),
      toEditor(named(kind, "ToEditorButton", new QPushButton(QStringLiteral("В редактор")))),
      print(named(kind, "PrintButton", new QPushButton(QStringLiteral("На печать")))),
      m_splitter(new QSplitter)
{
    setObjectName(QString::fromLatin1(names[kind].page));
    if (kind != Found)
        addDay(kind, today);
    if (kind == Received)
        addReceived();
    placeRows(kind == Found ? newRowsWithin(this) : newScrollingRows(this));
    setTextActions(false);
    connect(table, &CArchiveTable::enterPressed, text, qOverload<>(&QWidget::setFocus));
}

void CArchivePage::addDay(Kind kind, const QDate &today)
{
    date = new CDatePicker(names[kind].date, today);
    date->setMaximumDate(today);
    onlyTelegrams = named(kind, "OnlyTelegrams", new QCheckBox(QStringLiteral("Только телеграммы")));
}

void CArchivePage::addReceived()
{
    save = named(Received, "SaveButton", new QPushButton(QStringLiteral("Сохранить")));
    toPerforator =
        named(Received, "ToPerforatorButton", new QPushButton(QStringLiteral("Вывести на перфоратор")));
    saveAttach = named(Received, "SaveAttachButton", new QPushButton(QStringLiteral("Сохранить вложение")));
    saveAttach->setEnabled(false);
    forward = named(Received, "ForwardButton", new QPushButton(QStringLiteral("Переслать")));
}

void CArchivePage::placeRows(QVBoxLayout *rows)
{
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(table);
    m_splitter->addWidget(text);
    m_splitter->setStretchFactor(1, 1);
    const QList<QWidget *> switches{date, onlyTelegrams, registers};
    const QList<QWidget *> buttons{toEditor, print, save, toPerforator, saveAttach, forward};
    rows->addWidget(newFlowRow(switches));
    rows->addWidget(m_splitter, 1);
    rows->addWidget(newFlowRow(buttons));
    orderTabs(switches + QList<QWidget *>{table, text} + buttons);
}

void CArchivePage::setToday(const QDate &today)
{
    date->setMaximumDate(today);
    date->setDate(today);
}

void CArchivePage::setTextActions(bool on)
{
    for (QPushButton *button : {toEditor, print, save, toPerforator, forward})
        if (button != nullptr)
            button->setEnabled(on);
}

void CArchivePage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The list is given its room once it knows its width in the new font.
    if (event->type() == QEvent::FontChange)
        QTimer::singleShot(0, this, &CArchivePage::sizeList);
}

void CArchivePage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    QTimer::singleShot(0, this, &CArchivePage::sizeList);
}

// At first the list has the width of its columns. One that the operator has drawn wider keeps its proportion
// in another font, but never takes the room of the text.
void CArchivePage::sizeList()
{
    const int wanted = table->sizeHint().width();
    if (!isVisible() || wanted == m_tableWidth)
        return;
    const QList<int> sizes = m_splitter->sizes();
    const int all = sizes.value(0) + sizes.value(1);
    const int width = m_tableWidth == 0 ? wanted : sizes.value(0) * wanted / m_tableWidth;
    m_splitter->setSizes({qMin(width, all / 2), all - qMin(width, all / 2)});
    m_tableWidth = wanted;
}
