#include "ui/dialogs/options/access_option_dialog.h"

#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CAccessOptionDialog::CAccessOptionDialog(QWidget *parent) : CDialog(parent), m_code(new QLineEdit)
{
    setWindowTitle(QStringLiteral("Параметры"));
    auto *label = new QLabel(QStringLiteral("Код доступа"));
    label->setBuddy(m_code);
    m_code->setObjectName(QStringLiteral("code"));
    m_code->setEchoMode(QLineEdit::Password);
    QPushButton *apply = newDefaultButton("apply", QStringLiteral("Применить"));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(label);
    rows->addWidget(m_code);
    rows->addLayout(newButtonRow({apply, newLeaveButton()}));
    connect(apply, &QPushButton::clicked, this, &QDialog::accept);
    m_code->setFocus();
}

QString CAccessOptionDialog::code() const
{
    return m_code->text();
}
