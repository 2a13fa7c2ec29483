#include "ui/dialogs/send_tlg_dialog.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "text/call_numbers.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_lists_list_dialog.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/number_combo.h"
#include "ui/widgets/shown_part.h"
#include "ui/widgets/telegram_view.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

namespace
{
constexpr int NumberWidth = 16;                  // characters that are seen at once, at least
constexpr int NumberLength = 9;                  // characters that each further number gets
constexpr int FirstYear = 2000, LastYear = 2099; // the name of a queue file has two figures for it

/// Pixels of the screen that a row of controls may take.
int roomAcross()
{
    return QGuiApplication::primaryScreen()->availableSize().width() * 9 / 10;
}

/// Begins with the present minute, which is shown: what is seen is what is meant.
QDateTimeEdit *newSendTime()
{
    const QTime minute(Time.time.hour(), Time.time.minute());
    auto *edit = new QDateTimeEdit(QDateTime(Time.date, minute));
    edit->setObjectName(QStringLiteral("sendTime"));
    edit->setDisplayFormat(CTime::formatDD_MM_YYYY_HH_MM);
    edit->setDateRange(QDate(FirstYear, 1, 1), QDate(LastYear, 12, 31));
    edit->setCalendarPopup(true);
    return edit;
}

QFormLayout *newForm()
{
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

template <class Button> Button *newChoice(const char *name, const QString &label)
{
    auto *button = new Button(label);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QRadioButton *newToLine()
{
    return newChoice<QRadioButton>("toLine", QStringLiteral("Отправить в линию"));
}

/// On switched channels the line is there as long as someone is at its other end.
bool lineIsThere()
{
    return TlgThread.linkUp() && (Options.processMode != SKK || State.connectionActive);
}

bool lineIsFree()
{
    return lineIsThere() &&
           (Options.processMode == SKK || (TlgThread.sendBuffer.mIsEmpty() && TlgThread.allSent));
}
} // namespace

CSendTlgDialog::CSendTlgDialog(QWidget *parent)
    : CDialog(parent, &COptions::geometrySendTlg), m_text(newTelegramView()),
      m_send(newDefaultButton("send", QStringLiteral("Отправить")))
{
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_text, 1);
    switch (Procedure(Options.processMode)) {
    case SKK: addSwitchedControls(rows); break;
    case Direct: addDirectControls(rows); break;
    case CKS: break;
    }
    rows->addLayout(newButtonRow({}, {m_send, newLeaveButton()}));

    connect(m_send, &QPushButton::clicked, this, &CSendTlgDialog::slotApply);
    connect(&Time, &CTime::signal_1sec, this, &CSendTlgDialog::followLine);
    if (m_toLine != nullptr)
        connect(m_toLine, &QRadioButton::toggled, this, &CSendTlgDialog::slotRadioButtonClicked);
    followLine();
    if (m_number != nullptr)
        m_number->setFocus();
    else
        m_send->setFocus();
    resize(600, 500);
    takePlace();
}

void CSendTlgDialog::addSwitchedControls(QBoxLayout *rows)
{
    if (State.manualMode && State.connectionActive) {
        m_toLine = newToLine();
        m_toQueue = newChoice<QRadioButton>("toQueue", QStringLiteral("Сохранить для отправки: "));
        m_toQueue->setChecked(true);
        rows->addWidget(m_toLine);
        rows->addWidget(m_toQueue);
    }
    m_number = new CNumberCombo(Options.lastSKKCallNumbers,
                                [](const QString &text) { return readCallNumbers(text).text; });
    m_number->setObjectName(QStringLiteral("number"));
    m_number->setMinimumContentsLength(NumberWidth);
    connect(m_number, &CNumberCombo::numberChanged, this, &CSendTlgDialog::slotNumberChanged);
    connect(m_number, &CNumberCombo::enteredOverList, m_send, &QPushButton::click);
    m_note = newTroubleLabel("note");
    m_note->setWordWrap(true);
    m_note->hide();
    m_sendTime = newSendTime();

    QFormLayout *form = newForm();
    form->addRow(QStringLiteral("Номер:"), m_number);
    form->addRow(m_note);
    form->addRow(newNumberChoices());
    form->addRow(QStringLiteral("Отправить после:"), m_sendTime);
    rows->addLayout(form);
    addGuarantee(rows);
}

QLayout *CSendTlgDialog::newNumberChoices()
{
    auto *row = new QHBoxLayout0;
    if (!Options.abonents.isEmpty()) {
        QPushButton *abonents = newButton("abonents", QStringLiteral("Абоненты"));
        connect(abonents, &QPushButton::clicked, this, &CSendTlgDialog::slotAbonentSelect);
        row->addWidget(abonents);
    }
    if (!Options.abonentLists.isEmpty()) {
        // The first letter is Latin, as it always was: what looks for the button by its label finds it.
        QPushButton *lists = newButton("abonentLists", QStringLiteral("Cписки"));
        connect(lists, &QPushButton::clicked, this, &CSendTlgDialog::slotAbonentListsSelect);
        row->addWidget(lists);
    }
    m_cks = newChoice<QCheckBox>("cks", QStringLiteral("ЦКС"));
    row->addWidget(m_cks);
    row->addStretch();
    return row;
}

void CSendTlgDialog::addDirectControls(QBoxLayout *rows)
{
    m_toLine = newToLine();
    m_toQueue = newChoice<QRadioButton>("toQueue", QStringLiteral("Сохранить для отправки после: "));
    m_toQueue->setChecked(true);
    m_sendTime = newSendTime();
    QFormLayout *form = newForm();
    form->addRow(m_toLine);
    if (m_toQueue->sizeHint().width() + m_sendTime->sizeHint().width() > roomAcross())
        form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    form->addRow(m_toQueue, m_sendTime);
    rows->addLayout(form);
    addGuarantee(rows);
}

void CSendTlgDialog::addGuarantee(QBoxLayout *rows)
{
    if (!Options.enableProtectedSend)
        return;
    m_guaranteed = newChoice<QCheckBox>("guaranteed", QStringLiteral("Алгоритм гарантированной передачи"));
    rows->addWidget(m_guaranteed);
}

void CSendTlgDialog::setText(const QString &text)
{
    m_text->showText(shownPart(text));
}

void CSendTlgDialog::setNumber(const QString &number)
{
    if (m_number != nullptr)
        showNumbers(number);
}

void CSendTlgDialog::setCKS(bool offered, bool checked)
{
    if (m_cks == nullptr)
        return;
    m_cks->setVisible(offered);
    m_cks->setChecked(checked);
}

void CSendTlgDialog::slotNumberChanged(const QString &text)
{
    const CallNumbers numbers = readCallNumbers(text);
    makeRoom(NumberLength * numbers.count + NumberWidth);
    m_numberValid = numbers.complete;
    m_note->hide();
    checkOkEnable();
}

void CSendTlgDialog::slotRadioButtonClicked()
{
    checkOkEnable();
}

bool CSendTlgDialog::sendsAtOnce() const
{
    return m_toLine != nullptr && m_toLine->isChecked();
}

// A number is asked for on switched channels alone, and not by a line that stands already.
void CSendTlgDialog::checkOkEnable()
{
    m_send->setEnabled(m_number == nullptr || sendsAtOnce() || m_numberValid);
}

// A line that is merely busy leaves the choice, as what is sent waits its turn. One that is gone takes it
// away for good: if it came back by itself, a telegram meant for the queue could go out.
void CSendTlgDialog::followLine()
{
    if (m_toLine != nullptr) {
        m_toLine->setEnabled(lineIsFree());
        if (!lineIsThere() && m_toLine->isChecked())
            m_toQueue->setChecked(true);
    }
    checkOkEnable();
}

void CSendTlgDialog::slotAbonentSelect()
{
    CAbonentListDialog dialog(this);
    pickFrom(dialog);
}

void CSendTlgDialog::slotAbonentListsSelect()
{
    CAbonentListsListDialog dialog(this);
    pickFrom(dialog);
}

void CSendTlgDialog::pickFrom(CPickListDialog &list)
{
    list.selectMode = true;
    if (list.exec() == Accepted && !list.selected.isEmpty())
        takeNumbers(list.selected);
}

void CSendTlgDialog::showNumbers(const QString &numbers)
{
    makeRoom(numbers.size());
    m_number->setEditText(numbers);
}

// The line puts the cursor at its end with each limit that it is given.
void CSendTlgDialog::makeRoom(int characters)
{
    QLineEdit *line = m_number->lineEdit();
    if (line->maxLength() >= characters)
        return;
    const int cursor = line->cursorPosition();
    line->setMaxLength(characters);
    line->setCursorPosition(cursor);
}

// Of several numbers those stay behind that are too short for a comma: they would run into the next one, and
// the number of the two would be another's.
void CSendTlgDialog::takeNumbers(const QString &chosen)
{
    const QStringList numbers = chosen.split(QLatin1Char(','), Qt::SkipEmptyParts);
    QStringList taken, tooShort;
    for (const QString &number : numbers) {
        const bool fits = numbers.size() == 1 || readCallNumbers(number).complete;
        (fits ? taken : tooShort) << number.trimmed();
    }
    showNumbers(taken.join(QLatin1Char(',')));
    m_note->setText(QStringLiteral("Не взяты номера короче %1 знаков: ").arg(ShortestCallNumber) +
                    tooShort.join(QStringLiteral(", ")));
    m_note->setVisible(!tooShort.isEmpty());
    m_number->setFocus();
}

void CSendTlgDialog::slotApply()
{
    const bool atOnce = sendsAtOnce();
    followLine(); // it may have changed since the last second
    if (atOnce != sendsAtOnce() || !m_send->isEnabled())
        return;
    sendNow = atOnce;
    order.guaranteed = m_guaranteed != nullptr && m_guaranteed->isChecked();
    if (m_sendTime != nullptr)
        order.sendTime = m_sendTime->dateTime();
    if (m_number != nullptr) {
        order.numbers = m_number->currentText().split(QLatin1Char(','), Qt::SkipEmptyParts);
        order.toCKS = m_cks->isChecked();
        m_number->keepIn(Options.lastSKKCallNumbers);
    }
    done(Accepted);
}
