#include "ui/dialogs/number_dialog.h"

#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CNumberDialog::CNumberDialog(QWidget *parent)
    : CDialog(parent), m_edit(new QLineEdit), m_apply(newDefaultButton("apply", QStringLiteral("Применить")))
{
    m_edit->setObjectName(QStringLiteral("number"));

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Номер")));
    line->addWidget(m_edit);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(newButtonRow({m_apply, newLeaveButton()}));

    connect(m_edit, &QLineEdit::textChanged, this, &CNumberDialog::slotNumberChanged);
    connect(m_apply, &QPushButton::clicked, this, &CNumberDialog::slotApply);
    slotNumberChanged(QString());
}

int CNumberDialog::exec(const QString &title, const QString &text)
{
    m_edit->setText(text);
    m_edit->selectAll();
    return run(title, m_edit);
}

void CNumberDialog::slotNumberChanged(const QString &text)
{
    m_apply->setEnabled(!text.isEmpty());
}

void CNumberDialog::slotApply()
{
    number = m_edit->text();
    done(Accepted);
}
