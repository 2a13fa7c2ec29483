// Chapter of FormMain: the tabs of past and present days' telegrams.

#include "app/clock.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/form_main.h"
#include "ui/widgets/layouts.h"

#include <QDateEdit>
#include <QPushButton>

namespace
{
QDateEdit *newDatePicker(const QString &name)
{
    auto *picker = new QDateEdit(Time.date);
    picker->setObjectName(name);
    picker->setDisplayFormat(CTime::formatDD_MM_YYYY);
    picker->setCalendarPopup(true);
    picker->setMaximumDate(Time.date);
    return picker;
}
} // namespace

void FormMain::buildInputTab()
{
    auto *rows = new QVBoxLayoutMS(tabInput);
    dateInput = newDatePicker(QStringLiteral("dateInput"));
    inputToPerforatorButton = new QPushButton(QStringLiteral("Вывести на перфоратор"));
    inputToPerforatorButton->setObjectName(QStringLiteral("inputToPerforatorButton"));
    inputToPerforatorButton->setEnabled(false);
    rows->addWidget(dateInput, 0, Qt::AlignLeft);
    rows->addStretch();
    rows->addWidget(inputToPerforatorButton, 0, Qt::AlignLeft);
}

void FormMain::buildOutputTab()
{
    auto *rows = new QVBoxLayoutMS(tabOutput);
    dateOutput = newDatePicker(QStringLiteral("dateOutput"));
    rows->addWidget(dateOutput, 0, Qt::AlignLeft);
    rows->addStretch();
}

void FormMain::buildSearchTab()
{
    tabSearch->setLayout(newVBoxLayout());
}

void FormMain::printTextDialog(const QString &text)
{
    CPrintTxtDialog(text, this).exec();
}
