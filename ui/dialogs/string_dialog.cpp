#include "ui/dialogs/string_dialog.h"

#include "app/options.h"
#include "text/filters.h"
#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CStringDialog::CStringDialog(QWidget *parent)
    : CDialog(parent, &COptions::geometrySendString), m_edit(new QLineEdit),
      m_send(newDefaultButton("send", QStringLiteral("Отправить")))
{
    m_edit->setObjectName(QStringLiteral("line"));

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Строка")));
    line->addWidget(m_edit);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(newButtonRow({m_send, newLeaveButton()}));

    connect(m_edit, &QLineEdit::textChanged, this, &CStringDialog::slotChanged);
    connect(m_send, &QPushButton::clicked, this, &CStringDialog::slotApply);
    slotChanged(QString());
}

int CStringDialog::exec(const QString &title)
{
    m_edit->clear();
    return run(title, m_edit);
}

void CStringDialog::slotChanged(const QString &line)
{
    m_send->setEnabled(!line.isEmpty());
}

void CStringDialog::slotApply()
{
    const QString cleared = QStringClearNonMTK2(m_edit->text());
    if (cleared != m_edit->text()) {
        m_edit->setText(cleared);
        return;
    }
    text = cleared;
    done(Accepted);
}
