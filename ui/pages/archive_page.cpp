#include "ui/pages/archive_page.h"

#include "app/clock.h"
#include "ui/widgets/layouts.h"

#include <QDateEdit>
#include <QPushButton>

namespace
{
QDateEdit *newDatePicker(const QString &name, const QDate &today)
{
    auto *picker = new QDateEdit(today);
    picker->setObjectName(name);
    picker->setDisplayFormat(CTime::formatDD_MM_YYYY);
    picker->setCalendarPopup(true);
    picker->setMaximumDate(today);
    return picker;
}
} // namespace

CArchivePage::CArchivePage(Direction direction, const QDate &today, QWidget *parent) : QWidget(parent)
{
    const bool incoming = direction == Incoming;
    setObjectName(incoming ? QStringLiteral("tabInput") : QStringLiteral("tabOutput"));
    date = newDatePicker(incoming ? QStringLiteral("dateInput") : QStringLiteral("dateOutput"), today);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(date, 0, Qt::AlignLeft);
    rows->addStretch();
    if (!incoming)
        return;
    toPerforator = new QPushButton(QStringLiteral("Вывести на перфоратор"));
    toPerforator->setObjectName(QStringLiteral("inputToPerforatorButton"));
    toPerforator->setEnabled(false);
    rows->addWidget(toPerforator, 0, Qt::AlignLeft);
}

void CArchivePage::setToday(const QDate &today)
{
    date->setMaximumDate(today);
    date->setDate(today);
}
