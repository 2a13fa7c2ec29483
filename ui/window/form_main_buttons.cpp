// Chapter of FormMain: tabs, protocol tab, and the buttons of the procedure in force.

#include "app/options.h"
#include "link/tlg_thread.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/layouts.h"

#include <QFrame>
#include <QPushButton>
#include <QTabWidget>

#include <vector>

namespace
{
constexpr int ButtonMargin = 1, ButtonSpacing = 2;

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
    struct Page {
        QWidget *FormMain::*page;
        const char *title, *name;
        void (FormMain::*build)();
    };
    static const Page pages[] = {
        {&FormMain::tabProtocol, "Протокол", "tabProtocol", &FormMain::buildProtocolTab},
        {&FormMain::tabSend, "Передача", "tabSend", &FormMain::buildSendTab},
        {&FormMain::tabInput, "Входящие", "tabInput", &FormMain::buildInputTab},
        {&FormMain::tabOutput, "Исходящие", "tabOutput", &FormMain::buildOutputTab},
        {&FormMain::tabSearch, "Поиск", "tabSearch", &FormMain::buildSearchTab},
        {&FormMain::tabEditor, "Редактор", "tabEditor", &FormMain::buildEditorTab},
    };
    tabWidget = new QTabWidget;
    tabWidget->setObjectName(QStringLiteral("tabWidget"));
    for (const Page &page : pages) {
        this->*page.page = new QWidget;
        (this->*page.page)->setObjectName(QString::fromLatin1(page.name));
        tabWidget->addTab(this->*page.page, QString::fromUtf8(page.title));
        (this->*page.build)();
    }
}

void FormMain::buildProtocolTab()
{
    auto *rows = new QVBoxLayout0(tabProtocol);
    buildModeFrame();
    rows->addWidget(modeFrame);
    rows->addWidget(protocolWidget, 1);
}

void FormMain::buildModeFrame()
{
    modeFrame = new QFrame;
    modeFrame->setObjectName(QStringLiteral("modeFrame"));
    auto *line = new CFlowLayout(ButtonMargin, ButtonSpacing, modeFrame);
    for (const Button &button : buttonsInForce()) {
        auto *widget = new QPushButton(QString::fromUtf8(button.text));
        widget->setObjectName(QString::fromLatin1(button.name));
        // The keys go on to the line when the mouse has pressed a button.
        widget->setFocusPolicy(Qt::NoFocus);
        connect(widget, &QPushButton::clicked, this, button.pressed);
        line->addWidget(widget);
        modeButtons << widget;
    }
    modeFrame->setEnabled(TlgThread.linkUp());
}
