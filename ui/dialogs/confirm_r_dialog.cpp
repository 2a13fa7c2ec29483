#include "ui/dialogs/confirm_r_dialog.h"

#include "app/clock.h"
#include "app/options.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "text/mtk2.h"
#include "ui/sound.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>

namespace
{
const QString ConfirmLabel = QStringLiteral("Подтвердить");
constexpr int LongestInitials = 3; // a name this short is no operator for the automatic confirmation
} // namespace

CConfirmRDialog::CConfirmRDialog(QWidget *parent)
    : CDialog(parent), m_number(new QLineEdit), m_operator(new QLineEdit),
      m_confirm(newDefaultButton("confirm", ConfirmLabel))
{
    setWindowTitle(QStringLiteral("Подтверждение приема Р"));
    // With the main window in the tray this may be the last window on screen; its end is not the program's.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_number->setObjectName(QStringLiteral("number"));
    m_operator->setObjectName(QStringLiteral("operator"));
    QPushButton *cancel = newButton("cancel", QStringLiteral("Отказаться"));
    cancel->setAutoDefault(false);

    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("Р"), m_number);
    form->addRow(QStringLiteral("Оператор"), m_operator);
    form->addRow(newButtonRow({m_confirm, cancel}));

    connect(m_confirm, &QPushButton::pressed, this, &CConfirmRDialog::slotPressConfirm);
    connect(cancel, &QPushButton::pressed, this, &CConfirmRDialog::slotPressCancel);
    // However it is closed, by a button, by Esc or by the cross.
    connect(this, &QDialog::finished, this, [this] {
        countdown = 0;
        sound.stop();
    });
    connect(&Time, &CTime::signal_1sec, this, &CConfirmRDialog::slotOn_1sec);
}

void CConfirmRDialog::setRNumberAndOperator(int number, const QString &operatorName)
{
    m_number->setText(QString::number(number));
    m_operator->setText(operatorName);
}

void CConfirmRDialog::slotOn_1sec()
{
    if (countdown == 0 || m_operator->text().size() <= LongestInitials)
        return;
    --countdown;
    m_confirm->setText(ConfirmLabel + QStringLiteral(" (%1 сек)").arg(countdown));
    if (countdown == 0)
        slotPressConfirm();
}

void CConfirmRDialog::slotPressConfirm()
{
    const QString words = QStringLiteral("Р") + m_number->text().rightJustified(3, QLatin1Char('0')) +
                          QStringLiteral(" ПРИН ") + m_operator->text();
    TlgThread.sendBuffer.mAppend(upperMTK2(CProcessCKS::serviceMessage(words)));
    close();
}

void CConfirmRDialog::slotPressCancel()
{
    close();
}

void CConfirmRDialog::showEvent(QShowEvent *event)
{
    CDialog::showEvent(event);
    if (event->spontaneous()) // the system's, of a window that was minimised
        return;
    sound.play(Options.soundRTlgFile, Options.soundRTlgType);
    countdown = Options.autoConfirmRTimeOut;
    m_confirm->setText(ConfirmLabel);
}
