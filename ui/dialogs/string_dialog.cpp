#include "ui/dialogs/string_dialog.h"

#include "app/options.h"
#include "text/filters.h"
#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CStringDialog::CStringDialog(QWidget *parent)
    : CDialog(parent, &COptions::geometrySendString), m_edit(new QLineEdit),
      m_send(new QPushButton(QStringLiteral("Отправить")))
{
    auto *cancel = new QPushButton(QStringLiteral("Отменить"));
    m_edit->setObjectName(QStringLiteral("line"));
    m_send->setObjectName(QStringLiteral("send"));
    cancel->setObjectName(QStringLiteral("cancel"));

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Строка")));
    line->addWidget(m_edit);
    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(m_send);
    buttons->addWidget(cancel);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(buttons);

    connect(m_edit, &QLineEdit::textChanged, this, &CStringDialog::slotChanged);
    connect(m_send, &QPushButton::clicked, this, &CStringDialog::slotApply);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    slotChanged(QString());
}

int CStringDialog::exec(const QString &title)
{
    setWindowTitle(title);
    m_edit->clear();
    takePlace();
    return CDialog::exec();
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
