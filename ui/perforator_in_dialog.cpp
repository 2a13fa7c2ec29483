#include "ui/perforator_in_dialog.h"

#include "app/options.h"
#include "link/prf_thread.h"
#include "text/utils.h"
#include "ui/perforator_widgets.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

CPerforatorInDialog::CPerforatorInDialog(QWidget *parent)
    : QDialog(parent), m_state(newPerforatorState()), m_text(newTapeText()),
      m_start(newDialogButton("start", QStringLiteral("Старт"))),
      m_stop(newDialogButton("stop", QStringLiteral("Стоп"))),
      m_clear(newDialogButton("clear", QStringLiteral("Очистить"))),
      m_apply(newDialogButton("apply", QStringLiteral("Принять"))),
      m_close(newDialogButton("close", QStringLiteral("Закрыть")))
{
    setWindowTitle(QStringLiteral("Ввод c перфоратора"));
    m_start->setDefault(true);
    m_start->setToolTip(QStringLiteral("Читать ленту; прочитанное добавляется к тексту"));
    m_apply->setToolTip(QStringLiteral("Взять прочитанный текст"));
    placeRows();

    connect(m_start, &QPushButton::clicked, this, &CPerforatorInDialog::slotStart);
    connect(m_stop, &QPushButton::clicked, this, &CPerforatorInDialog::slotStop);
    connect(m_clear, &QPushButton::clicked, this, &CPerforatorInDialog::slotClear);
    connect(m_apply, &QPushButton::clicked, this, &CPerforatorInDialog::slotApply);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    connect(&PrfThread, &CPrfThread::signalOnReceived, this, &CPerforatorInDialog::slotOnReceived);
    connect(&PrfThread, &CPrfThread::signalOnState, this, &CPerforatorInDialog::slotOnState);
    (void)PrfThread.getAndClearReceive(); // of tape that nobody has asked for
    PrfThread.Activate();
    slotOnState();
    setRoomySize(this);
    CUtils::makeGeometry(this, Options.geometryPerforatorIn);
}

void CPerforatorInDialog::placeRows()
{
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_start, m_stop, m_clear})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(m_apply);
    buttons->addWidget(m_close);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(m_state);
    rows->addWidget(m_text);
    rows->addLayout(buttons);
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
    m_start->setFocus();
}

void CPerforatorInDialog::slotClear()
{
    (void)PrfThread.getAndClearReceive();
    data.clear();
    m_text->clear();
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

// Tape may run on for a moment after its stop, so what there is to take may come later than that.
void CPerforatorInDialog::updateButtons()
{
    const bool hasText = !data.isEmpty();
    m_start->setEnabled(!m_reading && PrfThread.connected);
    m_stop->setEnabled(m_reading);
    m_clear->setEnabled(!m_reading && hasText);
    m_apply->setEnabled(!m_reading && hasText);
}

void CPerforatorInDialog::leave()
{
    if (m_reading)
        slotStop(); // the tape would run on
    Options.geometryPerforatorIn = geometry();
    PrfThread.Deactivate();
}

// A dialog that ends by a button or by Esc gets no closing event.
void CPerforatorInDialog::done(int result)
{
    leave();
    QDialog::done(result);
}

void CPerforatorInDialog::closeEvent(QCloseEvent *event)
{
    leave();
    QDialog::closeEvent(event);
}
