#include "ui/dialogs/number_dialog.h"

#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CNumberDialog::CNumberDialog(QWidget *parent)
    : CDialog(parent), m_edit(new QLineEdit), m_apply(new QPushButton(QStringLiteral("Применить")))
{
    auto *cancel = new QPushButton(QStringLiteral("Отменить"));
    m_edit->setObjectName(QStringLiteral("number"));
    m_apply->setObjectName(QStringLiteral("apply"));
    cancel->setObjectName(QStringLiteral("cancel"));

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Номер")));
    line->addWidget(m_edit);
    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(m_apply);
    buttons->addWidget(cancel);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(buttons);

    connect(m_edit, &QLineEdit::textChanged, this, &CNumberDialog::slotNumberChanged);
    connect(m_apply, &QPushButton::clicked, this, &CNumberDialog::slotApply);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    slotNumberChanged(QString());
}

int CNumberDialog::exec(const QString &title, const QString &text)
{
    setWindowTitle(title);
    m_edit->setText(text);
    m_edit->selectAll();
    return CDialog::exec();
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
