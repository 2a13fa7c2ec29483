#include "ui/dialogs/print_txt_dialog.h"

#include "app/options.h"
#include "text/utils.h"

#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

CPrintTxtDialog::CPrintTxtDialog(const QString &text, QWidget *parent)
    : CDialog(parent, &COptions::geometryPrintTxt), m_text(new QTextEdit)
{
    setWindowTitle(QStringLiteral("Печать текста"));
    m_text->setObjectName(QStringLiteral("text"));
    m_text->setAcceptRichText(false);
    m_text->setPlainText(text);

    QPushButton *print = newDefaultButton("print", QStringLiteral("Распечатать"));
    QPushButton *leave = newLeaveButton("close", QStringLiteral("Закрыть"));
    connect(print, &QPushButton::clicked, this, &CPrintTxtDialog::slotApply);
    auto *page = new QVBoxLayout(this);
    page->addWidget(m_text);
    page->addLayout(newButtonRow({}, {print, leave}));
    resize(600, 500);
    takePlace();
}

void CPrintTxtDialog::slotApply()
{
    CUtils::printText(m_text->toPlainText());
    accept();
}
