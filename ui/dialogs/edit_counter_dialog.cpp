#include "ui/dialogs/edit_counter_dialog.h"

#include "ui/widgets/layouts.h"
#include "ui/widgets/spin_box_limits.h"

#include <QLabel>
#include <QPushButton>

namespace
{
constexpr int GreatestCounter = 999;
}

CEditCounterDialog::CEditCounterDialog(QWidget *parent)
    : CDialog(parent), m_title(new QLabel), m_edit(new QSpinBox_Limits(0, 0, GreatestCounter))
{
    auto *apply = new QPushButton(QStringLiteral("Применить"));
    auto *cancel = new QPushButton(QStringLiteral("Отменить"));
    m_title->setObjectName(QStringLiteral("title"));
    m_edit->setObjectName(QStringLiteral("counter"));
    apply->setObjectName(QStringLiteral("apply"));
    cancel->setObjectName(QStringLiteral("cancel"));

    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(apply);
    buttons->addWidget(cancel);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_title);
    rows->addWidget(m_edit);
    rows->addLayout(buttons);

    connect(apply, &QPushButton::clicked, this, &CEditCounterDialog::slotApply);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

int CEditCounterDialog::exec(int value, const QString &title)
{
    counter = -1;
    setWindowTitle(title);
    m_title->setText(title);
    m_edit->setValue(value);
    m_edit->selectAll();
    return CDialog::exec();
}

void CEditCounterDialog::slotApply()
{
    counter = m_edit->value();
    done(Accepted);
}
