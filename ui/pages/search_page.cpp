#include "ui/pages/search_page.h"

#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/widgets/date_picker.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/telegram_view.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace
{
template <class Control> Control *named(Control *control, const char *name)
{
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QCheckBox *newCheckedBox(const QString &text, const char *name)
{
    auto *box = named(new QCheckBox(text), name);
    box->setChecked(true);
    return box;
}

/// A word and what it names, which stay together where the row is cut.
QWidget *newGroup(const QString &word, const QList<QWidget *> &fields)
{
    auto *group = new QWidget;
    auto *line = new QHBoxLayout0(group);
    line->addWidget(new QLabel(word));
    for (QWidget *field : fields)
        line->addWidget(field);
    return group;
}
} // namespace

CSearchPage::CSearchPage(QAbstractItemModel &model, const QDate &today, QWidget *parent)
    : QWidget(parent), received(newCheckedBox(QStringLiteral("Прием"), "searchReceived")),
      sent(newCheckedBox(QStringLiteral("Передача"), "searchSent")),
      from(new CDatePicker("dateSearchFrom", today)), to(new CDatePicker("dateSearchTo", today)),
      contains(named(new QLineEdit, "searchContains")),
      search(named(new QPushButton(QStringLiteral("Поиск")), "searchButton")),
      count(named(new QLabel, "searchCount")), found(new CArchivePage(CArchivePage::Found, model, today))
{
    setObjectName(QStringLiteral("tabSearch"));
    placeRows();
    connect(contains, &QLineEdit::returnPressed, search, &QPushButton::click);
}

void CSearchPage::placeRows()
{
    auto *what = new QHBoxLayout0;
    what->addWidget(new QLabel(QStringLiteral("Содержит")));
    what->addWidget(contains, 1);
    what->addWidget(search);

    QVBoxLayoutMS *rows = newScrollingRows(this);
    rows->addWidget(newFlowRow({received, sent, newGroup(QStringLiteral("Дата"), {from, to}), count}));
    rows->addLayout(what);
    rows->addWidget(found, 1);
    orderTabs({received, sent, from, to, contains, search, found->registers, found->table, found->text,
               found->toEditor, found->print});
}
