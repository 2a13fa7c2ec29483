#include "ui/dialogs/re_send_tlg_dialog.h"

#include "app/clock.h"
#include "app/options.h"
#include "text/filters.h"
#include "text/telegram_index.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/number_combo.h"
#include "ui/widgets/shown_part.h"
#include "ui/widgets/telegram_view.h"

#include <QDateTimeEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace
{
constexpr int LongestPaste = 200; // characters, among which a number is looked for

/// What of \a text can stand in an index.
QString indexOnly(const QString &text)
{
    QString index;
    for (const QChar c : QStringClearNonMTK2(text))
        if (c.isLetterOrNumber() || c == QLatin1Char('='))
            index += c;
    return index.left(LongestTelegramIndexLength);
}

/// What of \a text can stand in a number. The comma stays: without it two numbers would become another one.
QString numberOnly(const QString &text)
{
    QString number;
    for (const QChar c : text)
        if (c.isDigit() || c == QLatin1Char('+') || c == QLatin1Char(','))
            number += c;
    return number;
}

bool hasDigit(const QString &number)
{
    return std::any_of(number.begin(), number.end(), [](QChar c) { return c.isDigit(); });
}

/// Rows of their own: side by side they would be wider than a screen in large letters.
QFormLayout *newForm(std::initializer_list<std::pair<QString, QWidget *>> fields)
{
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const auto &[label, field] : fields)
        form->addRow(label, field);
    return form;
}
} // namespace

CReSendTlgDialog::CReSendTlgDialog(const QString &telegram, QWidget *parent)
    : CDialog(parent, &COptions::geometryReSendTlg), text(telegram), m_text(newTelegramView()),
      m_fault(newTroubleLabel("fault")), m_forward(newDefaultButton("forward", QStringLiteral("Переслать")))
{
    setWindowTitle(QStringLiteral("Пересылка телеграммы"));
    m_text->showText(shownPart(text));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_text, 1);
    rows->addLayout(Options.processMode == SKK ? newNumberForm() : newIndexForm());
    rows->addWidget(m_fault);
    rows->addLayout(newButtonRow({}, {m_forward, newLeaveButton()}));

    m_number->lineEdit()->setMaxLength(LongestPaste);
    connect(m_number, &CNumberCombo::numberChanged, this, &CReSendTlgDialog::updateForward);
    connect(m_number, &CNumberCombo::enteredOverList, m_forward, &QPushButton::click);
    connect(m_forward, &QPushButton::clicked, this, &CReSendTlgDialog::slotApply);
    updateForward();
    m_number->setFocus();
    resize(600, 500);
    takePlace();
}

QLayout *CReSendTlgDialog::newIndexForm()
{
    m_category = new QComboBox;
    m_category->setObjectName(QStringLiteral("category"));
    m_category->addItems(Options.CategoryList.split(QLatin1Char(',')));
    m_number = new CNumberCombo(Options.lastCKSCallNumbers, indexOnly);
    m_number->setObjectName(QStringLiteral("index"));
    m_number->lineEdit()->setPlaceholderText(QStringLiteral("000000"));
    connect(m_category, &QComboBox::currentTextChanged, this, &CReSendTlgDialog::updateForward);

    return newForm({{QStringLiteral("Категория:"), m_category}, {QStringLiteral("Индекс:"), m_number}});
}

QLayout *CReSendTlgDialog::newNumberForm()
{
    m_number = new CNumberCombo(Options.lastSKKCallNumbers, numberOnly);
    m_number->setObjectName(QStringLiteral("number"));
    m_sendTime = new QDateTimeEdit(Time.dateTime);
    m_sendTime->setObjectName(QStringLiteral("sendTime"));
    m_sendTime->setDisplayFormat(CTime::formatDD_MM_YYYY_HH_MM);
    m_sendTime->setCalendarPopup(true);

    return newForm({{QStringLiteral("Номер:"), m_number}, {QStringLiteral("Время отправки:"), m_sendTime}});
}

// A queue file without a number is never dialled, one with a wrong index is refused by the centre. A direct
// link asks for neither.
QString CReSendTlgDialog::fault() const
{
    const QString typed = m_number->currentText();
    switch (Procedure(Options.processMode)) {
    case SKK:
        if (typed.contains(QLatin1Char(',')))
            return QStringLiteral("Укажите один номер");
        return hasDigit(typed) ? QString() : QStringLiteral("Не указан номер");
    case CKS: return telegramIndexFault(m_category->currentText(), typed);
    case Direct: break;
    }
    return QString();
}

void CReSendTlgDialog::updateForward()
{
    m_fault->setText(fault());
    m_forward->setEnabled(m_fault->text().isEmpty());
}

void CReSendTlgDialog::slotApply()
{
    if (Options.processMode == SKK) {
        number = m_number->currentText();
        sendTime = m_sendTime->dateTime();
        m_number->keepIn(Options.lastSKKCallNumbers);
    } else {
        category = m_category->currentText();
        index = m_number->currentText();
        m_number->keepIn(Options.lastCKSCallNumbers);
    }
    done(Accepted);
}
