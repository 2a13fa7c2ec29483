// Chapter of FormMain: menu bar and tray icon.

#include "app/options.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_lists_list_dialog.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/dialogs/operator_list_dialog.h"
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

void buildSettingsMenu(FormMain &form)
{
    QMenu *menu = form.menuBar->addMenu(QStringLiteral("Настройки"));
    menu->setObjectName(QStringLiteral("menuSettings"));
    form.actionOptions = named(menu, QStringLiteral("Параметры"), "actionOptions");
    QObject::connect(form.actionOptions, &QAction::triggered, &form, &FormMain::openOptions);
    if (Options.processMode == SKK) {
        menu->addSeparator();
        QAction *abonents = named(menu, QStringLiteral("Абоненты"), "actionAbonents");
        QAction *lists = named(menu, QStringLiteral("Списки абонентов"), "actionAbonentLists");
        QObject::connect(abonents, &QAction::triggered, &form, &FormMain::openAbonents);
        QObject::connect(lists, &QAction::triggered, &form, &FormMain::openAbonentLists);
    }
    menu->addSeparator();
    form.actionOperators = named(menu, QStringLiteral("Операторы"), "actionOperators");
    QObject::connect(form.actionOperators, &QAction::triggered, &form, &FormMain::openOperators);
}

void buildHelpMenu(FormMain &form)
{
    if (!QFileInfo::exists(manualPath())) {
        QObject::connect(named(form.menuBar, QStringLiteral("?"), "actionAbout"), &QAction::triggered, &form,
                         &FormMain::openAbout);
        return;
    }
    QMenu *menu = form.menuBar->addMenu(QStringLiteral("?"));
    menu->setObjectName(QStringLiteral("menuHelp"));
    QObject::connect(named(menu, QStringLiteral("Руководство пользователя"), "actionUserManual"),
                     &QAction::triggered, &form, &FormMain::openUserManual);
    QObject::connect(named(menu, QStringLiteral("О программе"), "actionAbout"), &QAction::triggered, &form,
                     &FormMain::openAbout);
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
    buildSettingsMenu(*this);
    connect(named(menuBar, QStringLiteral("Выход"), "actionExit"), &QAction::triggered, this,
            &FormMain::closeApplication);
    buildHelpMenu(*this);
}

void FormMain::openAbonents()
{
    CAbonentListDialog(this).exec();
}

void FormMain::openAbonentLists()
{
    CAbonentListsListDialog(this).exec();
}

void FormMain::openOperators()
{
    COperatorListDialog(this).exec();
    checkOperatorList();
}

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
