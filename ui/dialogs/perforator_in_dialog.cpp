#include "ui/dialogs/perforator_in_dialog.h"

#include "app/options.h"
#include "link/prf_thread.h"

#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

CPerforatorInDialog::CPerforatorInDialog(QWidget *parent)
    : CPerforatorDialog(QStringLiteral("Ввод c перфоратора"), &COptions::geometryPerforatorIn, parent),
      m_start(newDefaultButton("start", QStringLiteral("Старт"),
                               QStringLiteral("Читать ленту; прочитанное добавляется к тексту"))),
      m_stop(newButton("stop", QStringLiteral("Стоп"))),
      m_clear(newButton("clear", QStringLiteral("Очистить"))),
      m_apply(newButton("apply", QStringLiteral("Принять"), QStringLiteral("Взять прочитанный текст")))
{
    placeRows({m_state, m_text}, {m_start, m_stop, m_clear}, {m_apply, m_close});

    connect(m_start, &QPushButton::clicked, this, &CPerforatorInDialog::slotStart);
    connect(m_stop, &QPushButton::clicked, this, &CPerforatorInDialog::slotStop);
    connect(m_clear, &QPushButton::clicked, this, &CPerforatorInDialog::slotClear);
    connect(m_apply, &QPushButton::clicked, this, &CPerforatorInDialog::slotApply);
    connect(&PrfThread, &CPrfThread::signalOnReceived, this, &CPerforatorInDialog::slotOnReceived);
    connect(&PrfThread, &CPrfThread::signalOnState, this, &CPerforatorInDialog::slotOnState);
    (void)PrfThread.getAndClearReceive(); // of tape that nobody has asked for
    slotOnState();
}

void CPerforatorInDialog::slotStart()
{
    m_reading = true;
    updateButtons();
    m_stop->setFocus();
    PrfThread.startRead();
}

void CPerforatorInDialog::slotStop()
{
    m_reading = false;
    PrfThread.stopRead();
    slotOnReceived();
    m_start->setEnabled(true); // what could be stopped may be started, whatever the state
    m_start->setFocus();
}

void CPerforatorInDialog::slotClear()
{
    (void)PrfThread.getAndClearReceive();
    data.clear();
    m_text->clear();
    m_start->setFocus(); // Enter shall not meet the next one that is enabled, which closes
    updateButtons();
}

void CPerforatorInDialog::slotApply()
{
    slotOnReceived();
    done(Accepted);
}

// The view stays at the end of the tape. It shows no carriage return: a line feed alone makes a new line.
void CPerforatorInDialog::slotOnReceived()
{
    QString piece = PrfThread.getAndClearReceive();
    data += piece;
    m_text->moveCursor(QTextCursor::End);
    m_text->insertPlainText(piece.remove(QLatin1Char('\r')));
    m_text->ensureCursorVisible();
    updateButtons();
}

void CPerforatorInDialog::slotOnState()
{
    m_state->setText(PrfThread.state());
    updateButtons();
}

// A connection that is still punching for the dialog before is given up after that, and the tape would stop
// with it. Tape may run on for a moment after its stop, so what there is to take may come later than that.
void CPerforatorInDialog::updateButtons()
{
    const bool hasText = !data.isEmpty();
    m_start->setEnabled(!m_reading && PrfThread.connected && !PrfThread.restartRequested);
    m_stop->setEnabled(m_reading);
    m_clear->setEnabled(!m_reading && hasText);
    m_apply->setEnabled(!m_reading && hasText);
}

void CPerforatorInDialog::leave()
{
    if (m_reading)
        slotStop(); // the tape would run on
    CPerforatorDialog::leave();
}
