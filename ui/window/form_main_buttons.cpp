// Chapter of FormMain: the tabs, and the buttons of the procedure in force.

#include "app/options.h"
#include "link/tlg_thread.h"
#include "ui/form_main.h"
#include "ui/pages/protocol_page.h"
#include "ui/roll/protocol_widget.h"

#include <QFrame>
#include <QPushButton>
#include <QTabWidget>

#include <vector>

namespace
{
struct Button {
    const char *text, *name;
    void (FormMain::*pressed)();
};

const std::vector<Button> buttonsCKS = {
    {"КГ0 ЗЗ", "buttonKG0", &FormMain::slotSendKG0},    {"КГ1 ВАШ", "buttonKG1", &FormMain::slotSendKG1},
    {"КГ2 СТОП", "buttonKG2", &FormMain::slotSendKG2},  {"КГ4 P", "buttonKG4", &FormMain::slotSendKG4},
    {"КГ5 ТЕКСТ", "buttonKG5", &FormMain::slotSendKG5},
};
const std::vector<Button> buttonsSKK = {
    {"Вызов", "buttonAccept", &FormMain::protocolAccept},
    {"Набор", "buttonCall", &FormMain::protocolCallNumber},
    {"КТО", "buttonWho", &FormMain::protocolSendWho},
    {"АО", "buttonAO", &FormMain::protocolSendAO},
    {"Отпр. файл", "buttonSendFile", &FormMain::protocolSendFile},
    {"Отпр. строку", "buttonSendString", &FormMain::protocolSendString},
    {"Звонок", "buttonBell", &FormMain::protocolBell},
    {"Отбой", "buttonHangup", &FormMain::protocolHangup},
};
const std::vector<Button> buttonsDirect = {
    {"Отпр. файл", "buttonSendFile", &FormMain::protocolSendFile},
    {"Отпр. строку", "buttonSendString", &FormMain::protocolSendString},
    {"Отпр. текст", "buttonSendText", &FormMain::protocolSendText},
};

const std::vector<Button> &buttonsInForce()
{
    return Options.processMode == CKS ? buttonsCKS : Options.processMode == SKK ? buttonsSKK : buttonsDirect;
}
} // namespace

void FormMain::buildTabs()
{
    tabWidget = new QTabWidget;
    tabWidget->setObjectName(QStringLiteral("tabWidget"));
    tabWidget->addTab(buildProtocolPage(), QStringLiteral("Протокол"));
    tabWidget->addTab(buildSendPage(), QStringLiteral("Передача"));
    tabWidget->addTab(buildInputPage(), QStringLiteral("Входящие"));
    tabWidget->addTab(buildOutputPage(), QStringLiteral("Исходящие"));
    tabWidget->addTab(buildSearchPage(), QStringLiteral("Поиск"));
    tabWidget->addTab(buildEditorPage(), QStringLiteral("Редактор"));
}

QWidget *FormMain::buildProtocolPage()
{
    protocolPage = new CProtocolPage(protocolWidget);
    for (const Button &button : buttonsInForce()) {
        QPushButton *widget =
            protocolPage->addButton(QString::fromUtf8(button.text), QString::fromLatin1(button.name));
        connect(widget, &QPushButton::clicked, this, button.pressed);
    }
    protocolPage->modeFrame->setEnabled(TlgThread.linkUp());
    return protocolPage;
}
