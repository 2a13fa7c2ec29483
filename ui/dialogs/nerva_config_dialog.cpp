#include "ui/dialogs/nerva_config_dialog.h"

#include "app/ask.h"
#include "link/fw_update.h"
#include "link/nerva_exchange.h"
#include "link/tlg_thread.h"
#include "ui/dialogs/nerva_form.h"
#include "ui/widgets/layouts.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <utility>

namespace
{
constexpr int Tenths = 10;
constexpr int LogLines = 1000;

/// A field that tells of the device and is not typed into.
QLineEdit *newShownField(const char *name)
{
    auto *field = new QLineEdit;
    field->setObjectName(QLatin1String(name));
    field->setReadOnly(true);
    return field;
}

/// What a window can have of the screen, its frame aside.
QSize screenOf(const QWidget &window)
{
    constexpr int Frame = 40;
    const QScreen *screen = window.screen();
    return screen == nullptr ? QSize() : screen->availableSize() - QSize(Frame, Frame);
}

bool isLogKey(const QKeyEvent &event)
{
    return event.key() == Qt::Key_L && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
}
} // namespace

CNervaConfigDialog::CNervaConfigDialog(QWidget *parent, const QString &serial)
    : CDialog(parent), m_serial(serial),
      m_exchange(new CNervaExchange(serial, CNervaExchange::OwnClock, this)), m_form(new CNervaForm),
      m_sn(newShownField("sn")), m_version(newShownField("ver")),
      m_store(new QCheckBox(QStringLiteral("Записать в EEPROM и перезапустить"))), m_log(new QPlainTextEdit),
      m_read(newButton("read", QStringLiteral("Прочитать"))),
      m_write(newButton("write", QStringLiteral("Записать"))),
      m_upgrade(newButton("upgrade", QStringLiteral("Update firmware"))), m_cancel(newLeaveButton())
{
    TlgThread.pauseThread();
    build();
    m_shown = m_form->values();
    connect(m_read, &QPushButton::clicked, this, &CNervaConfigDialog::readCfg);
    connect(m_write, &QPushButton::clicked, this, &CNervaConfigDialog::writeCfg);
    connect(m_upgrade, &QPushButton::clicked, this, &CNervaConfigDialog::upgradeFW);
    connect(m_form, &CNervaForm::modeIndexChanged, this, &CNervaConfigDialog::slotModeIndexChanged);
    connect(m_exchange, &CNervaExchange::note, this, &CNervaConfigDialog::log);
    connect(m_exchange, &CNervaExchange::progress, this, &CNervaConfigDialog::showProgress,
            Qt::QueuedConnection); // the box handles events when it is moved
    connect(m_exchange, &CNervaExchange::received, this, &CNervaConfigDialog::takeReply);
    connect(m_exchange, &CNervaExchange::written, this,
            [this] { m_cancel->setText(QStringLiteral("Закрыть")); });
    connect(m_exchange, &CNervaExchange::finished, this, &CNervaConfigDialog::endExchange,
            Qt::QueuedConnection); // behind the last of these
    connect(m_exchange, &CNervaExchange::closed, this, [this] { CDialog::reject(); });
    connect(&TlgThread, &CTlgThread::signalOnState, this, &CNervaConfigDialog::slotTlgThreadState);
    slotTlgThreadState();
}

CNervaConfigDialog::~CNervaConfigDialog()
{
    delete m_exchange; // the port is free before the link wants it
    restartLink();
}

void CNervaConfigDialog::build()
{
    setWindowTitle(QStringLiteral("Nerva (%1)").arg(m_serial));
    m_store->setObjectName(QStringLiteral("store"));
    m_log->setObjectName(QStringLiteral("log"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(LogLines);
    m_log->setTabChangesFocus(true);
    m_upgrade->hide();
    for (QPushButton *button : {m_read, m_write, m_upgrade, m_cancel})
        button->setAutoDefault(false); // Enter in a field must not start anything on the device
    for (QComboBox *box : m_form->findChildren<QComboBox *>())
        box->installEventFilter(this); // it takes every key for the beginning of a word

    auto *rows = new QVBoxLayoutMS(this);
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(m_form);
    rows->addWidget(area, 2);
    auto *device = new QHBoxLayout0;
    device->addWidget(new QLabel(QStringLiteral(" SN")));
    device->addWidget(m_sn);
    device->addWidget(new QLabel(QStringLiteral(" Ver")));
    device->addWidget(m_version);
    rows->addLayout(device);
    rows->addWidget(m_log, 1);
    rows->addWidget(m_store);
    rows->addLayout(newButtonRow({m_read, m_write, m_upgrade}, {m_cancel}));
    takeSize(*area);
}

/// All fields without scrolling, and some lines of the log, as far as the screen goes.
void CNervaConfigDialog::takeSize(const QScrollArea &area)
{
    const QSize form = m_form->sizeHint();
    const int bar = area.verticalScrollBar()->sizeHint().width();
    const int rest = sizeHint().height() - area.sizeHint().height();
    const QSize wanted(form.width() + 2 * bar, form.height() + bar + rest);
    const QSize screen = screenOf(*this);
    resize(wanted.boundedTo(screen));
}

void CNervaConfigDialog::log(const QString &line)
{
    m_log->appendPlainText(line);
    m_log->verticalScrollBar()->setValue(m_log->verticalScrollBar()->maximum());
}

void CNervaConfigDialog::slotModeIndexChanged(int)
{
    m_form->showGroups();
}

void CNervaConfigDialog::slotTlgThreadState()
{
    const bool free =
        TlgThread.paused && !TlgThread.connected && !m_exchange->isBusy() && !m_upgrading && !m_closing;
    for (QPushButton *button : {m_read, m_write, m_upgrade})
        button->setEnabled(free);
}

void CNervaConfigDialog::readCfg()
{
    if (m_exchange->isBusy() || m_upgrading)
        return;
    m_progress = new QProgressDialog(QString(), QStringLiteral("Отменить"), 0, Tenths, this);
    m_progress->setWindowTitle(QStringLiteral("Read"));
    m_progress->setModal(true);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setMinimumDuration(0);
    connect(m_progress, &QProgressDialog::canceled, m_exchange, &CNervaExchange::cancel);
    connect(m_progress, &QDialog::rejected, m_exchange, &CNervaExchange::cancel); // by Esc
    m_progress->setMinimumWidth(widthOfTitle(m_progress->windowTitle()));
    m_progress->setValue(0);
    m_progress->show();
    beginExchange([this] { m_exchange->read(); });
}

void CNervaConfigDialog::showProgress(int tenths)
{
    if (m_progress != nullptr)
        m_progress->setValue(tenths);
}

void CNervaConfigDialog::takeReply(const QByteArray &reply)
{
    log(QString::fromLatin1(reply));
    log(QStringLiteral("Check"));
    cfgDataStr = nervaValuesOf(reply);
    m_form->showValues(cfgDataStr);
    m_shown = m_form->values();
    m_sn->setText(cfgDataStr[NervaSn]);
    m_version->setText(cfgDataStr[NervaVer]);
    const bool old = needsNervaUpgrade(cfgDataStr);
    m_upgrade->setVisible(old);
    if (old)
        log(QStringLiteral("need upgrade fw"));
}

void CNervaConfigDialog::writeCfg()
{
    if (m_exchange->isBusy() || m_upgrading)
        return;
    log(QStringLiteral("*** make json string"));
    NervaValues form = m_form->values();
    form[NervaSn] = m_serial;
    const NervaChange change = nervaChange(form, cfgDataStr, m_shown);
    for (const QString &line : change.notes)
        log(line);
    if (!change.refusal.isEmpty())
        return log(change.refusal);
    beginExchange([&] { m_exchange->write(change.text, m_store->isChecked()); });
}

/// A button that is disabled loses the keyboard, to the one that leaves the dialog.
void CNervaConfigDialog::beginExchange(const std::function<void()> &begin)
{
    m_keyboard = focusWidget();
    begin();
    slotTlgThreadState();
}

void CNervaConfigDialog::endExchange()
{
    if (m_progress != nullptr)
        std::exchange(m_progress, nullptr)->deleteLater();
    slotTlgThreadState();
    if (m_keyboard != nullptr)
        m_keyboard->setFocus();
    m_keyboard = nullptr;
}

void CNervaConfigDialog::upgradeFW()
{
    const QString question = QStringLiteral("Выполнить обновление прошивки Nerva?\r\nНе прерывайте "
                                            "запущенный процесс.");
    if (m_exchange->isBusy() || m_upgrading ||
        ask(this, QStringLiteral("Velda"), question) != QMessageBox::Yes)
        return;
    m_upgrading = true;
    setFormEnabled(false);
    m_exchange->closePort();
    while (!updateFirmware() &&
           ask(this, QStringLiteral("Velda"),
               QStringLiteral("Обновление завершилось с ошибкой. Повторить процесс?")) == QMessageBox::Yes) {
    }
    m_upgrading = false;
    setFormEnabled(true);
}

bool CNervaConfigDialog::updateFirmware()
{
    const bool done = CFWUpdateThread::update(cfgDataStr[NervaSn]);
    log(done ? QStringLiteral("upgrade complite") : QStringLiteral("upgrade failed"));
    return done;
}

void CNervaConfigDialog::reject()
{
    if (mayClose())
        CDialog::reject();
}

void CNervaConfigDialog::closeEvent(QCloseEvent *event)
{
    if (mayClose())
        CDialog::closeEvent(event);
    else
        event->ignore();
}

/// With an open port the adapter is told first, and the exchange closes the dialog when that is done.
bool CNervaConfigDialog::mayClose()
{
    if (m_upgrading || m_closing)
        return false;
    if (!m_exchange->isOpen())
        return true;
    m_closing = true;
    setFormEnabled(false);
    m_exchange->cancel();
    m_exchange->leave();
    return false;
}

void CNervaConfigDialog::done(int result)
{
    CDialog::done(result);
    restartLink();
}

/// What has been logged can be read all the time.
void CNervaConfigDialog::setFormEnabled(bool enabled)
{
    m_form->setEnabled(enabled);
    m_store->setEnabled(enabled);
    m_cancel->setEnabled(enabled);
    slotTlgThreadState();
}

void CNervaConfigDialog::restartLink()
{
    if (std::exchange(m_linkPaused, false))
        TlgThread.restartThread();
}

void CNervaConfigDialog::keyPressEvent(QKeyEvent *event)
{
    if (isLogKey(*event))
        m_log->setVisible(m_log->isHidden());
    else
        CDialog::keyPressEvent(event);
}

bool CNervaConfigDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !isLogKey(*static_cast<QKeyEvent *>(event)))
        return CDialog::eventFilter(watched, event);
    keyPressEvent(static_cast<QKeyEvent *>(event));
    return true;
}
