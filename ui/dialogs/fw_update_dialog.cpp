#include "ui/dialogs/fw_update_dialog.h"

#include "app/options.h"
#include "link/fw_update.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "link/utils_ports.h"
#include "ui/widgets/layouts.h"

#include <QComboBox>
#include <QHideEvent>
#include <QPushButton>
#include <QShowEvent>

#include <utility>

namespace
{
/// Whether the serial number is of a class of adapters that takes firmware.
bool isAdapter(const QString &serial)
{
    return !serial.isEmpty() && QStringLiteral("123").contains(serial.at(0));
}

QStringList adapters()
{
    QStringList serials;
    for (const SerialPort &port : serialPorts())
        if (isAdapter(port.serial))
            serials << shortSerial(port.serial);
    return serials;
}

/// A port that the settings give for the firmware, whatever adapters there are; empty is none.
const QString &fixedPort()
{
    return Options.ovverrideTreloPort;
}
} // namespace

CFWUpdateDialog::CFWUpdateDialog(QWidget *parent)
    : CDialog(parent), m_device(new QComboBox), m_apply(newButton("apply", QStringLiteral("Обновить"))),
      m_lock(newButton("lock", QStringLiteral("Заблокировать"))), m_cancel(newLeaveButton())
{
    setWindowTitle(QStringLiteral("Firmware update"));
    m_device->setObjectName(QStringLiteral("device"));
    for (QPushButton *button : {m_apply, m_lock, m_cancel})
        button->setAutoDefault(false); // Enter must not start anything on a device
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_device);
    rows->addLayout(newButtonRow({m_apply, m_lock, m_cancel}));

    m_device->addItems(adapters());
    deviceChanged(m_device->currentText());
    connect(m_device, &QComboBox::currentTextChanged, this, &CFWUpdateDialog::deviceChanged);
    connect(m_apply, &QPushButton::clicked, this, &CFWUpdateDialog::apply);
    connect(m_lock, &QPushButton::clicked, this, &CFWUpdateDialog::lock);
}

CFWUpdateDialog::~CFWUpdateDialog()
{
    restartLinks();
}

void CFWUpdateDialog::deviceChanged(const QString &serial)
{
    const bool enabled = !m_working && (!fixedPort().isEmpty() || isAdapter(serial));
    m_apply->setEnabled(enabled);
    m_lock->setEnabled(enabled);
}

/// An operation lets the window live on; a second one, or the links back on their ports, would break into it.
/// A fixed port takes the test image by either button: there is no serial number to choose an image by, or to
/// send the lock command to.
void CFWUpdateDialog::work(bool (*operation)(const QString &serial))
{
    setWorking(true);
    if (fixedPort().isEmpty())
        operation(m_device->currentText());
    else
        CFWUpdateThread::testUpdate(fixedPort());
    setWorking(false);
    m_cancel->setText(QStringLiteral("Закрыть"));
}

void CFWUpdateDialog::setWorking(bool working)
{
    m_working = working;
    m_device->setEnabled(!working);
    m_cancel->setEnabled(!working);
    deviceChanged(m_device->currentText());
}

void CFWUpdateDialog::apply()
{
    work([](const QString &serial) { return CFWUpdateThread::update(serial); });
}

void CFWUpdateDialog::lock()
{
    work(&CFWUpdateThread::lock);
}

void CFWUpdateDialog::reject()
{
    if (!m_working)
        CDialog::reject();
}

void CFWUpdateDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        pauseLinks();
    CDialog::showEvent(event);
}

void CFWUpdateDialog::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous()) // that is the system's, of a minimised window
        restartLinks();
    CDialog::hideEvent(event);
}

void CFWUpdateDialog::pauseLinks()
{
    if (std::exchange(m_linksPaused, true))
        return;
    m_punchWasPaused = PrfThread.paused;
    TlgThread.pauseThread();
    PrfThread.pauseThread();
}

void CFWUpdateDialog::restartLinks()
{
    if (!std::exchange(m_linksPaused, false))
        return;
    TlgThread.restartThread();
    if (!m_punchWasPaused)
        PrfThread.restartThread();
}
