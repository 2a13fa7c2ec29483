// Chapter of FormMain: menu bar and tray icon.

#include "app/options.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/form_main.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>

namespace
{
QString manualPath()
{
    return Options.appPath + Options.userManualPath;
}

template <class Menu> QAction *named(Menu *menu, const QString &text, const char *name)
{
    QAction *action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}
} // namespace

void FormMain::buildTray()
{
    auto *trayMenu = new QMenu(this);
    trayMenu->setObjectName(QStringLiteral("trayMenu"));
    connect(named(trayMenu, QStringLiteral("Развернуть"), "trayShow"), &QAction::triggered, this,
            &QWidget::show);
    connect(named(trayMenu, QStringLiteral("Выход"), "trayExit"), &QAction::triggered, this,
            &FormMain::closeApplication);
    trayIcon.setContextMenu(trayMenu);
    setWindowIcon(trayIcon.icons[CTrayIcon::TrayStart]);
    trayIcon.setVisible(true);
    updateTitles();
}

void FormMain::buildMenuBar()
{
    menuBar = new QMenuBar(this);
    menuBar->setObjectName(QStringLiteral("menuBar"));
    buildSettingsMenu();
    connect(named(menuBar, QStringLiteral("Выход"), "actionExit"), &QAction::triggered, this,
            &FormMain::closeApplication);
    buildHelpMenu();
}

void FormMain::buildSettingsMenu()
{
    QMenu *menu = menuBar->addMenu(QStringLiteral("Настройки"));
    menu->setObjectName(QStringLiteral("menuSettings"));
    actionOptions = named(menu, QStringLiteral("Параметры"), "actionOptions");
    connect(actionOptions, &QAction::triggered, this, &FormMain::openOptions);
    if (Options.processMode == SKK) {
        menu->addSeparator();
        QAction *abonents = named(menu, QStringLiteral("Абоненты"), "actionAbonents");
        QAction *lists = named(menu, QStringLiteral("Списки абонентов"), "actionAbonentLists");
        connect(abonents, &QAction::triggered, this, &FormMain::openAbonents);
        connect(lists, &QAction::triggered, this, &FormMain::openAbonentLists);
        abonents->setEnabled(false);
        lists->setEnabled(false);
    }
    menu->addSeparator();
    actionOperators = named(menu, QStringLiteral("Операторы"), "actionOperators");
    connect(actionOperators, &QAction::triggered, this, &FormMain::openOperators);
    actionOperators->setEnabled(false);
}

void FormMain::buildHelpMenu()
{
    if (!QFileInfo::exists(manualPath())) {
        connect(named(menuBar, QStringLiteral("?"), "actionAbout"), &QAction::triggered, this,
                &FormMain::openAbout);
        return;
    }
    QMenu *menu = menuBar->addMenu(QStringLiteral("?"));
    menu->setObjectName(QStringLiteral("menuHelp"));
    connect(named(menu, QStringLiteral("Руководство пользователя"), "actionUserManual"), &QAction::triggered,
            this, &FormMain::openUserManual);
    connect(named(menu, QStringLiteral("О программе"), "actionAbout"), &QAction::triggered, this,
            &FormMain::openAbout);
}

// The settings are edited in velda.ini, and the operators' and subscribers' entries are disabled, as long as
// their dialogs are not part of the program.
void FormMain::openOptions() {}
void FormMain::openAbonents() {}
void FormMain::openAbonentLists() {}
void FormMain::openOperators() {}

void FormMain::openUserManual()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(manualPath()));
}

void FormMain::openAbout()
{
    CAboutDialog(this).exec();
}

void FormMain::iconActivated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::Trigger)
        return;
    if (isVisible() && !isMinimized())
        hide();
    else
        showNormal();
}
