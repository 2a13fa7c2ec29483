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
    QPushButton *apply = newDefaultButton("apply", QStringLiteral("Применить"));
    m_title->setObjectName(QStringLiteral("title"));
    m_edit->setObjectName(QStringLiteral("counter"));

    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_title);
    rows->addWidget(m_edit);
    rows->addLayout(newButtonRow({apply, newLeaveButton()}));

    connect(apply, &QPushButton::clicked, this, &CEditCounterDialog::slotApply);
}

int CEditCounterDialog::exec(int value, const QString &title)
{
    counter = -1;
    m_title->setText(title);
    m_edit->setValue(value);
    m_edit->selectAll();
    return run(title, m_edit);
}

void CEditCounterDialog::slotApply()
{
    counter = m_edit->value();
    done(Accepted);
}
