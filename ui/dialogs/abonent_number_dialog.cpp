#include "ui/dialogs/abonent_number_dialog.h"

#include "app/options.h"
#include "ui/widgets/layouts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

CAbonentNumberDialog::CAbonentNumberDialog(QWidget *parent)
    : CDialog(parent), m_numbers(new QComboBox), m_dial(newDefaultButton("dial", QStringLiteral("Набрать")))
{
    m_numbers->setObjectName(QStringLiteral("number"));
    m_numbers->setEditable(true);
    m_numbers->setInsertPolicy(QComboBox::NoInsert);
    m_numbers->addItems(Options.lastManualCallNumbers);
    m_numbers->lineEdit()->setPlaceholderText(QStringLiteral("0000"));
    offerNumbersAsList();

    auto *line = new QHBoxLayout0;
    line->addWidget(new QLabel(QStringLiteral("Номер")));
    line->addWidget(m_numbers, 1);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(line);
    rows->addLayout(newButtonRow({m_dial, newLeaveButton()}));

    connect(m_numbers, &QComboBox::editTextChanged, this, &CAbonentNumberDialog::slotNumberChanged);
    connect(m_dial, &QPushButton::clicked, this, &CAbonentNumberDialog::slotApply);
}

int CAbonentNumberDialog::exec(const QString &startNumber, const QString &title)
{
    m_numbers->setEditText(startNumber);
    slotNumberChanged(startNumber);
    m_numbers->lineEdit()->selectAll();
    return run(title, m_numbers);
}

// A former number that is put behind the one being typed would be dialled in its stead.
void CAbonentNumberDialog::offerNumbersAsList()
{
    QCompleter *completer = m_numbers->completer();
    completer->setCompletionMode(QCompleter::PopupCompletion);
    // Enter over the open list closes the list alone. If nothing in it has been chosen, it is meant to dial.
    connect(m_numbers->lineEdit(), &QLineEdit::returnPressed, this, [this, completer] {
        if (completer->popup()->isVisible() && !completer->popup()->currentIndex().isValid())
            m_dial->click();
    });
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
    Options.lastManualCallNumbers << number;
    Options.lastManualCallNumbers.removeDuplicates();
    Options.lastManualCallNumbers.sort();
    done(Accepted);
}
