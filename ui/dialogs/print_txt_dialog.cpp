#include "ui/dialogs/print_txt_dialog.h"

#include "app/options.h"
#include "text/utils.h"

#include <QHBoxLayout>
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

    auto *print = new QPushButton(QStringLiteral("Распечатать"));
    auto *leave = new QPushButton(QStringLiteral("Закрыть"));
    print->setObjectName(QStringLiteral("print"));
    leave->setObjectName(QStringLiteral("close"));
    connect(print, &QPushButton::clicked, this, &CPrintTxtDialog::slotApply);
    connect(leave, &QPushButton::clicked, this, &QWidget::close);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(print);
    buttons->addWidget(leave);
    auto *page = new QVBoxLayout(this);
    page->addWidget(m_text);
    page->addLayout(buttons);
    resize(600, 500);
    takePlace();
}

void CPrintTxtDialog::slotApply()
{
    CUtils::printText(m_text->toPlainText());
    accept();
}
