#include "ui/perforator_out_dialog.h"

#include "app/options.h"
#include "link/prf_thread.h"
#include "text/utils.h"
#include "ui/perforator_widgets.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

CPerforatorOutDialog::CPerforatorOutDialog(QWidget *parent)
    : QDialog(parent), m_state(newPerforatorState()), m_text(newTapeText()), m_progress(new QProgressBar),
      m_start(newDialogButton("start", QStringLiteral("Пуск"))),
      m_stop(newDialogButton("stop", QStringLiteral("Стоп"))),
      m_skip(newDialogButton("skip", QStringLiteral("Пропуск 1"))),
      m_skip10(newDialogButton("skip10", QStringLiteral("Пропуск 10"))),
      m_close(newDialogButton("close", QStringLiteral("Закрыть")))
{
    setWindowTitle(QStringLiteral("Вывод на перфоратор"));
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setFormat(QStringLiteral("%v из %m"));
    m_start->setDefault(true);
    m_start->setToolTip(QStringLiteral("Пробить текст на ленте"));
    m_stop->setToolTip(QStringLiteral("Не пробивать остаток текста"));
    m_skip->setToolTip(QStringLiteral("Продвинуть ленту на один знак «|»"));
    m_skip10->setToolTip(QStringLiteral("Продвинуть ленту на десять знаков «|»"));
    placeRows();
    setRoomySize(this);

    connect(m_start, &QPushButton::clicked, this, &CPerforatorOutDialog::slotStart);
    connect(m_stop, &QPushButton::clicked, this, &CPerforatorOutDialog::slotStop);
    connect(m_skip, &QPushButton::clicked, this, &CPerforatorOutDialog::slotSkip);
    connect(m_skip10, &QPushButton::clicked, this, &CPerforatorOutDialog::slotSkip10);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    connect(&PrfThread, &CPrfThread::signalOnSended, this, &CPerforatorOutDialog::slotOnSended);
    connect(&PrfThread, &CPrfThread::signalOnState, this, &CPerforatorOutDialog::slotOnState);
    PrfThread.Activate();
    slotOnState();
}

void CPerforatorOutDialog::placeRows()
{
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_start, m_stop, m_skip, m_skip10})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(m_close);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(m_state);
    rows->addWidget(m_text);
    rows->addWidget(m_progress);
    rows->addLayout(buttons);
}

void CPerforatorOutDialog::Print(const QString &toPunch)
{
    text = toPunch;
    m_text->setPlainText(text);
    m_progress->setRange(0, text.size());
    m_progress->setValue(0);
    m_progress->setVisible(!text.isEmpty()); // without an end it would run for ever
    CUtils::makeGeometry(this, Options.geometryPerforatorOut);
    exec();
}

void CPerforatorOutDialog::slotStart()
{
    m_progress->setValue(0);
    PrfThread.clearSent();
    PrfThread.Send(text);
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

void CPerforatorOutDialog::leave()
{
    Options.geometryPerforatorOut = geometry();
    PrfThread.Deactivate();
}

// A dialog that is closed by Esc gets no closing event.
void CPerforatorOutDialog::done(int result)
{
    leave();
    QDialog::done(result);
}

void CPerforatorOutDialog::closeEvent(QCloseEvent *event)
{
    leave();
    QDialog::closeEvent(event);
}
