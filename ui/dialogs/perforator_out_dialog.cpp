#include "ui/dialogs/perforator_out_dialog.h"

#include "app/options.h"
#include "link/prf_thread.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>

CPerforatorOutDialog::CPerforatorOutDialog(QWidget *parent)
    : CPerforatorDialog(QStringLiteral("Вывод на перфоратор"), &COptions::geometryPerforatorOut, parent),
      m_progress(new QProgressBar),
      m_start(newDefaultButton("start", QStringLiteral("Пуск"), QStringLiteral("Пробить текст на ленте"))),
      m_stop(newButton("stop", QStringLiteral("Стоп"), QStringLiteral("Не пробивать остаток текста"))),
      m_skip(newButton("skip", QStringLiteral("Пропуск 1"),
                       QStringLiteral("Продвинуть ленту на один знак «|»"))),
      m_skip10(newButton("skip10", QStringLiteral("Пропуск 10"),
                         QStringLiteral("Продвинуть ленту на десять знаков «|»")))
{
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setFormat(QStringLiteral("%v из %m"));
    placeRows({m_state, m_text, m_progress}, {m_start, m_stop, m_skip, m_skip10}, {m_close});

    connect(m_start, &QPushButton::clicked, this, &CPerforatorOutDialog::slotStart);
    connect(m_stop, &QPushButton::clicked, this, &CPerforatorOutDialog::slotStop);
    connect(m_skip, &QPushButton::clicked, this, &CPerforatorOutDialog::slotSkip);
    connect(m_skip10, &QPushButton::clicked, this, &CPerforatorOutDialog::slotSkip10);
    connect(&PrfThread, &CPrfThread::signalOnSended, this, &CPerforatorOutDialog::slotOnSended);
    connect(&PrfThread, &CPrfThread::signalOnState, this, &CPerforatorOutDialog::slotOnState);
    slotOnState();
}

void CPerforatorOutDialog::Print(const QString &toPunch)
{
    text = toPunch;
    m_text->setPlainText(text);
    m_progress->setRange(0, text.size());
    m_progress->setValue(0);
    m_progress->setVisible(!text.isEmpty()); // without an end it would run for ever
    exec();
}

void CPerforatorOutDialog::slotStart()
{
    m_progress->setValue(0);
    PrfThread.clearSent();
    PrfThread.Send(text);
    m_text->setFocus(); // another Enter shall not meet the stop
    updateStart();
}

void CPerforatorOutDialog::slotStop()
{
    PrfThread.clearSend();
    updateStart();
}

void CPerforatorOutDialog::slotSkip()
{
    PrfThread.Send(QStringLiteral("|"));
}

void CPerforatorOutDialog::slotSkip10()
{
    PrfThread.Send(QStringLiteral("||||||||||"));
}

void CPerforatorOutDialog::slotOnSended()
{
    m_progress->setValue(qMin(PrfThread.sentLength(), m_progress->maximum())); // blank tape counts too
    updateStart();
}

void CPerforatorOutDialog::slotOnState()
{
    const bool connected = PrfThread.connected;
    m_state->setText(PrfThread.state());
    for (QPushButton *button : {m_stop, m_skip, m_skip10})
        button->setEnabled(connected);
    updateStart();
}

// A second press would punch the text twice.
void CPerforatorOutDialog::updateStart()
{
    m_start->setEnabled(PrfThread.connected && PrfThread.waitingLength() == 0);
}
