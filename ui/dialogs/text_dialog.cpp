#include "ui/dialogs/text_dialog.h"

#include "app/options.h"
#include "text/filters.h"
#include "ui/widgets/layouts.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

CTextDialog::CTextDialog(QWidget *parent)
    : CDialog(parent, &COptions::geometryTextDialog), m_edit(new QPlainTextEdit),
      m_send(newDefaultButton("send", QStringLiteral("Отправить")))
{
    m_edit->setObjectName(QStringLiteral("text"));
    m_edit->setTabChangesFocus(true);

    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(new QLabel(QStringLiteral("Текст")));
    rows->addWidget(m_edit);
    rows->addLayout(newButtonRow({m_send, newLeaveButton()}));

    connect(m_edit, &QPlainTextEdit::textChanged, this, &CTextDialog::slotChanged);
    connect(m_send, &QPushButton::clicked, this, &CTextDialog::slotApply);
    slotChanged();
}

int CTextDialog::exec(const QString &title)
{
    m_edit->clear();
    return run(title, m_edit);
}

void CTextDialog::slotChanged()
{
    m_send->setEnabled(!m_edit->document()->isEmpty());
}

void CTextDialog::slotApply()
{
    const QString written = m_edit->toPlainText();
    const QString cleared = QStringClearNonMTK2(written);
    if (cleared != written) {
        m_edit->setPlainText(cleared);
        return;
    }
    text = cleared;
    done(Accepted);
}
