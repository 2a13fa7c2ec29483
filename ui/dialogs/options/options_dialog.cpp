#include "ui/dialogs/options/options_dialog.h"

#include "app/ask.h"
#include "app/clock.h"
#include "app/options.h"
#include "ui/dialogs/options/centre_options.h"
#include "ui/dialogs/options/direct_options.h"
#include "ui/dialogs/options/editor_options.h"
#include "ui/dialogs/options/file_options.h"
#include "ui/dialogs/options/link_options.h"
#include "ui/dialogs/options/look_options.h"
#include "ui/dialogs/options/other_options.h"
#include "ui/dialogs/options/print_options.h"
#include "ui/dialogs/options/sound_options.h"
#include "ui/dialogs/options/start_options.h"
#include "ui/dialogs/options/switched_options.h"
#include "ui/sound.h"
#include "ui/widgets/layouts.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>

#include <tuple>

namespace
{
constexpr QSize DefaultSize(780, 560);
constexpr int SwitchedBaud = 50; // of a switched network, whatever the control shows

/// What the line's link is set up with.
auto lineEnd()
{
    return Options.TcpMode ? std::make_tuple(true, Options.Host, Options.Port, Options.AsTspSrv)
                           : std::make_tuple(false, Options.TRELO_SN, Options.tlgBaud, false);
}

/// What the perforator is, while there is one.
auto perforatorEnd()
{
    return Options.usePrf ? std::make_tuple(true, Options.SOREL_SN, Options.prfBaudIndex)
                          : std::make_tuple(false, QString(), 0);
}

bool isSecretKey(const QKeyEvent &event)
{
    const bool held =
        event.modifiers().testFlag(Qt::ControlModifier) && event.modifiers().testFlag(Qt::ShiftModifier);
    return held && (event.key() == Qt::Key_F || event.key() == Qt::Key_C);
}
} // namespace

COptionsDialog::COptionsDialog(bool fullAccess, QWidget *parent)
    : CDialog(parent, &COptions::geometryOptions), m_tabs(new QTabWidget)
{
    setWindowTitle(QStringLiteral("Параметры"));
    m_tabs->setObjectName(QStringLiteral("tabs"));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_tabs);
    QPushButton *apply = newDefaultButton("apply", QStringLiteral("Применить"));
    rows->addLayout(newButtonRow({}, {apply, newLeaveButton()}));
    connect(apply, &QPushButton::clicked, this, &COptionsDialog::slotApply);

    buildPages(fullAccess);
    for (COptionPage *page : qAsConst(m_pages))
        page->load();
    for (QWidget *control : m_tabs->findChildren<QWidget *>())
        if (control->focusPolicy() != Qt::NoFocus)
            control->installEventFilter(this);
    connect(m_tabs, &QTabWidget::currentChanged, this, &COptionsDialog::currentTabChanged);
    connect(m_sounds, &CSoundOptions::began, this, &COptionsDialog::followSound);
    resize(DefaultSize);
    takePlace();
    m_tabs->setFocus();
}

void COptionsDialog::buildPages(bool fullAccess)
{
    m_link = new CLinkOptions;
    m_print = new CPrintOptions;
    m_sounds = new CSoundOptions;
    const auto procedure = [fullAccess](int number) { return fullAccess && Options.processMode == number; };
    addPage(m_link, QStringLiteral("Подключение"), fullAccess);
    addPage(new CCentreOptions, QStringLiteral("ЦКС"), procedure(CKS));
    addPage(new CSwitchedOptions, QStringLiteral("СКК"), procedure(SKK));
    addPage(new CDirectOptions, QStringLiteral("ПС"), procedure(Direct));
    addPage(new CFileOptions, QStringLiteral("Файлы"), true);
    addPage(m_print, QStringLiteral("Печать"), true);
    addPage(new CStartOptions, QStringLiteral("Запуск"), fullAccess);
    addPage(new CLookOptions, QStringLiteral("Оформление"), true);
    addPage(m_sounds, QStringLiteral("Звуки"), true);
    addPage(new CEditorOptions, QStringLiteral("Редактор"), true);
    addPage(new COtherOptions, QStringLiteral("Разное"), fullAccess);
}

void COptionsDialog::addPage(COptionPage *page, const QString &title, bool shown)
{
    const int index = m_tabs->addTab(page, title);
    m_tabs->setTabVisible(index, shown);
    m_tabs->setTabEnabled(index, shown); // the keys that change the tab would show it
    m_pages << page;
}

// Apply

void COptionsDialog::slotApply()
{
    if (!confirmProcedure())
        return;
    const auto formerLine = lineEnd();
    const auto formerPerforator = perforatorEnd();
    applyPages();
    lineChanged = lineEnd() != formerLine;
    perforatorChanged = perforatorEnd() != formerPerforator;
    accept();
}

bool COptionsDialog::confirmProcedure()
{
    const int chosen = m_link->procedure->currentIndex();
    restartNeeded = chosen >= 0 && chosen != Options.processMode;
    if (!restartNeeded || ask(this, QStringLiteral("Velda"),
                              QStringLiteral("Вы действительно хотите изменить тип подключения?\n"
                                             "Будет произведен выход из программы")) == QMessageBox::Yes)
        return true;
    m_link->procedure->setCurrentIndex(Options.processMode);
    restartNeeded = false;
    return false;
}

void COptionsDialog::applyPages()
{
    for (COptionPage *page : qAsConst(m_pages))
        page->apply();
    if (Options.processModeConfigured != CKS && Options.processModeConfigured != Direct)
        Options.tlgBaud = SwitchedBaud;
}

// Pages and sounds

void COptionsDialog::currentTabChanged(int index)
{
    if (index == m_tabs->indexOf(m_link))
        m_link->updateAdaptersInfo();
    else
        sound.stop();
    if (index == m_tabs->indexOf(m_print))
        m_print->updatePrinters();
}

void COptionsDialog::followSound()
{
    connect(&Time, &CTime::signal_1sec, this, &COptionsDialog::on_1sec, Qt::UniqueConnection);
}

void COptionsDialog::on_1sec()
{
    if (m_sounds->plays())
        return;
    m_sounds->restoreButtons();
    disconnect(&Time, &CTime::signal_1sec, this, &COptionsDialog::on_1sec);
}

void COptionsDialog::closeEvent(QCloseEvent *event)
{
    sound.stop();
    CDialog::closeEvent(event);
}

void COptionsDialog::done(int result)
{
    if (m_sounds->plays())
        sound.stop();
    CDialog::done(result);
}

// Keys

void COptionsDialog::keyPressEvent(QKeyEvent *event)
{
    if (!isSecretKey(*event))
        return CDialog::keyPressEvent(event);
    event->accept();
    if (event->key() == Qt::Key_F)
        m_link->openFirmware();
    else
        m_link->openAdapterConfiguration();
}

// A list takes every key for a search in it.
bool COptionsDialog::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && isSecretKey(*static_cast<QKeyEvent *>(event))) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return CDialog::eventFilter(object, event);
}
