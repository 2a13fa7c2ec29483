#include "ui/dialogs/abonent_number_dialog.h"

#include "app/options.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/number_combo.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CAbonentNumberDialog::CAbonentNumberDialog(QWidget *parent)
    : CDialog(parent), m_numbers(new CNumberCombo(Options.lastManualCallNumbers)),
      m_dial(newDefaultButton("dial", QStringLiteral("Набрать")))
{
    const bool hasAbonents = !Options.abonents.isEmpty();
    QPushButton *abonents = newButton("abonents", QStringLiteral("..."),
                                      hasAbonents ? QStringLiteral("Выбрать из списка абонентов")
                                                  : QStringLiteral("Список абонентов пуст"));
    abonents->setEnabled(hasAbonents);
    abonents->setMaximumWidth(2 * abonents->sizeHint().height());
    m_numbers->setObjectName(QStringLiteral("number"));
    m_numbers->lineEdit()->setPlaceholderText(QStringLiteral("0000"));

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Номер")));
    line->addWidget(m_numbers, 1);
    line->addWidget(abonents);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(newButtonRow({m_dial, newLeaveButton()}));

    connect(m_numbers, &CNumberCombo::numberChanged, this, &CAbonentNumberDialog::slotNumberChanged);
    connect(m_numbers, &CNumberCombo::enteredOverList, m_dial, &QPushButton::click);
    connect(abonents, &QPushButton::clicked, this, &CAbonentNumberDialog::slotAbonentSelect);
    connect(m_dial, &QPushButton::clicked, this, &CAbonentNumberDialog::slotApply);
}

int CAbonentNumberDialog::exec(const QString &startNumber, const QString &title)
{
    m_numbers->setEditText(startNumber);
    slotNumberChanged(startNumber);
    m_numbers->lineEdit()->selectAll();
    return run(title, m_numbers);
}

void CAbonentNumberDialog::setDialAllowed(bool allowed)
{
    m_dialAllowed = allowed;
    slotNumberChanged(m_numbers->currentText());
}

void CAbonentNumberDialog::slotNumberChanged(const QString &text)
{
    m_dial->setEnabled(m_dialAllowed && !text.isEmpty());
}

void CAbonentNumberDialog::slotApply()
{
    number = m_numbers->currentText();
    m_numbers->keepIn(Options.lastManualCallNumbers);
    done(Accepted);
}

void CAbonentNumberDialog::slotAbonentSelect()
{
    CAbonentListDialog dialog(this);
    dialog.selectMode = true;
    if (dialog.exec() != Accepted || dialog.selected.isEmpty())
        return;
    m_numbers->setEditText(dialog.selected);
    m_numbers->setFocus();
}
