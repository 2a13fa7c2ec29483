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

} // namespace

CArchivePage::CArchivePage(Kind kind, QAbstractItemModel &model, const QDate &today, QWidget *parent)
    : QWidget(parent),
      registers(named(kind, "Registers", new QCheckBox(QStringLiteral("Показать регистры")))),
      table(new CArchiveTable(model, columnWidths(kind, model), names[kind].table)),
      text(named(kind, "Text", new CTelegramView)),
      toEditor(named(kind, "ToEditorButton", new QPushButton(QStringLiteral("В редактор")))),
      print(named(kind, "PrintButton", new QPushButton(QStringLiteral("На печать")))),
      m_splitter(new QSplitter), m_tableWidth(table->sizeHint().width())
{
    setObjectName(QString::fromLatin1(names[kind].page));
    if (kind != Found)
        addDay(kind, today);
    if (kind == Incoming)
        addIncoming();
    placeRows();
    setTextActions(false);
    connect(table, &CArchiveTable::enterPressed, text, qOverload<>(&QWidget::setFocus));
}

void CArchivePage::addDay(Kind kind, const QDate &today)
{
    date = new CDatePicker(names[kind].date, today);
    date->setMaximumDate(today);
    onlyTelegrams = named(kind, "OnlyTelegrams", new QCheckBox(QStringLiteral("Только телеграммы")));
}

void CArchivePage::addIncoming()
{
    save = named(Incoming, "SaveButton", new QPushButton(QStringLiteral("Сохранить")));
    toPerforator =
        named(Incoming, "ToPerforatorButton", new QPushButton(QStringLiteral("Вывести на перфоратор")));
    saveAttach = named(Incoming, "SaveAttachButton", new QPushButton(QStringLiteral("Сохранить вложение")));
    saveAttach->setEnabled(false);
    forward = named(Incoming, "ForwardButton", new QPushButton(QStringLiteral("Переслать")));
}

void CArchivePage::placeRows()
{
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(table);
    m_splitter->addWidget(text);
    m_splitter->setStretchFactor(1, 1);
    const QList<QWidget *> switches{date, onlyTelegrams, registers};
    const QList<QWidget *> buttons{toEditor, print, save, toPerforator, saveAttach, forward};
    auto *rows = new QVBoxLayoutMS(this);
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
        QTimer::singleShot(0, this, &CArchivePage::followFont);
}

// A list that the operator has drawn wider keeps its proportion, but never takes the room of the text.
void CArchivePage::followFont()
{
    const int wanted = table->sizeHint().width();
    const QList<int> sizes = m_splitter->sizes();
    const int all = sizes.value(0) + sizes.value(1);
    const int width = qMin(sizes.value(0) * wanted / qMax(1, m_tableWidth), all / 2);
    m_splitter->setSizes({width, all - width});
    m_tableWidth = wanted;
}
