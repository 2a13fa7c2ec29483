#include "ui/form_main.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "text/utils.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/search_page.h"
#include "ui/pages/send_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/file_table.h"
#include "ui/widgets/layouts.h"
#include "ui/window/status_strip.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTimer>

namespace
{
constexpr QSize DefaultSize(800, 600);

void checkProcedureTimers()
{
    if (Options.processMode == CKS)
        ProcessCKS.timeCheck1sec();
    else if (Options.processMode == SKK)
        ProcessSKK.timeCheck1sec();
    else if (Options.processMode == Direct)
        ProcessDirect.timeCheck1sec();
}
} // namespace

FormMain::FormMain(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("FormMain"));
    // A program in the tray has no window; only the real close ends it (see closeEvent).
    QApplication::setQuitOnLastWindowClosed(false);

    resize(DefaultSize);
    if (Options.saveWindowPos)
        CUtils::makeGeometry(this, Options.geometryMainForm);
    protocolWidget = new CProtocolWidget(&Log, this);
    protocolWidget->setObjectName(QStringLiteral("protocolWidget"));
    protocolWidget->setShowRegisters(Options.ShowRegisters);
    protocolWidget->setShowInfo(Options.ShowInfo);
    protocolWidget->setShowCmd(Options.ShowCmd);
    buildTray();

    auto *rows = new QVBoxLayout0(this);
    buildMenuBar();
    rows->setMenuBar(menuBar);
    buildStrip();
    rows->addWidget(strip);
    buildTabs();
    rows->addWidget(tabWidget, 1);

    connectThreads();
    connectState();
    checkProcedureTimers();
    setThreadsParams();
    checkEditorInterfaceMode();
    watchDraft();
    setPrfInterface();
    slotSetTlgModeInterface();
    // Where the keyboard begins in each tab, and in the window
    for (QWidget *first : QList<QWidget *>{sendPage->tableSend, inputPage->table, outputPage->table,
                                           searchPage->contains, editorPage->text})
        first->setFocus();
    protocolWidget->setFocus();
    qApp->installEventFilter(this);
}

FormMain::~FormMain()
{
    deleteConfirmDialogs();
    if (mainWindow == this)
        mainWindow = nullptr;
}

void FormMain::connectThreads()
{
    connect(&Time, &CTime::signal_1sec, this, &FormMain::slot_on_1sec);
    connect(&Time, &CTime::signal_1sec, protocolWidget, &CProtocolWidget::slotFlush);
    connect(&TlgThread, &CTlgThread::signalOnReceived, this, &FormMain::slotOnTlgReceived);
    connect(&TlgThread, &CTlgThread::signalOnSended, this, &FormMain::slotOnTlgSended);
    connect(&TlgThread, &CTlgThread::signalOnState, this, &FormMain::slotOnTlgState);
    connect(&PrfThread, &CPrfThread::signalOnState, this, &FormMain::slotOnPrfState);
}

void FormMain::connectState()
{
    connect(&State, &CState::tlgModeChanged, this, &FormMain::slotSetTlgModeInterface);
    connect(&State, &CState::automaticChanged, this, &FormMain::setAutomaticInterface);
    connect(&State, &CState::titlesChanged, this, &FormMain::updateTitles);
    connect(&ProcessSKK, &CProcessSKK::updateTlgModeInterface, this, &FormMain::slotSetTlgModeInterface);
    connect(&ProcessCKS, &CProcessCKS::confirmationDue, this, &FormMain::slotConfirmR);
    connect(&ProcessCKS, &CProcessCKS::categoryAnnounced, this, &FormMain::slotConfirmCategory);
    connect(protocolWidget, &CProtocolWidget::KeyPressed, this, &FormMain::ProtocolKeyPressed);
    connect(protocolWidget, &QWidget::customContextMenuRequested, this,
            &FormMain::slotProtocolContextMenuEvent);
    connect(&receiver, &CReceiver::resumed, this, &FormMain::noteReception);
    connect(&trayIcon, &QSystemTrayIcon::activated, this, &FormMain::iconActivated);
    connect(tabWidget, &QTabWidget::currentChanged, this, &FormMain::changedTabWidget);
}

void FormMain::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The strip is sized once its labels have taken the new font as well.
    if (event->type() == QEvent::FontChange && strip)
        QTimer::singleShot(0, this, &FormMain::sizeStrip);
}

void FormMain::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    sizeStrip();
}

bool FormMain::eventFilter(QObject *object, QEvent *event)
{
    // A key of the window is looked at before the field that has the focus can take it for text.
    if (event->type() == QEvent::KeyPress && object->isWidgetType() &&
        static_cast<QWidget *>(object)->window() == this && FormKeyPressed(static_cast<QKeyEvent *>(event)))
        return true;
    return QWidget::eventFilter(object, event);
}
