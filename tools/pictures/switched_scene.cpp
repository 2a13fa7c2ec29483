#include "app/options.h"
#include "app/state.h"
#include "tools/pictures/camera.h"
#include "tools/pictures/hand.h"
#include "tools/pictures/scenes.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/protocol_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace
{
void fillLists()
{
    Options.abonents = {
        {QStringLiteral("КАЗАНЬ ЦЕНТР"), QStringLiteral("П"), QStringLiteral("223344"), QString()},
        {QStringLiteral("САМАРА ВОКЗАЛ"), QStringLiteral("П"), QStringLiteral("334455"),
         QStringLiteral("до 18 часов")},
        {QStringLiteral("ТВЕРЬ УЗЕЛ"), QStringLiteral("С"), QStringLiteral("556677"), QString()}};
    Options.abonentLists = {{QStringLiteral("СОСЕДИ"),
                             {QStringLiteral("334455"), QStringLiteral("556677")},
                             QStringLiteral("сводка в 9 часов")}};
}

/// Takes the list as it is while the operator works on it.
void takeList(void (FormMain::*open)(), const char *title, const char *name)
{
    Camera::begin([=] { (mainWindow->*open)(); });
    QWidget *dialog = Camera::awaitDialog(QString::fromUtf8(title));
    Camera::act([=] { dialog->findChild<QCheckBox *>(QStringLiteral("editing"))->setChecked(true); });
    Camera::take(QString::fromLatin1(name), dialog);
    Hand::close(dialog);
}

void pressButton(const char *name)
{
    Camera::begin([=] { mainWindow->findChild<QPushButton *>(QString::fromLatin1(name))->click(); });
}

/// The operator calls a subscriber, asks who it is, and says who calls.
void takeConnection()
{
    Hand::openTab(mainWindow->protocolPage);
    Hand::setManual(true);
    pressButton("buttonCall");
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Номер абонента"));
    Camera::act([=] {
        dialog->findChild<QComboBox *>(QStringLiteral("number"))->setEditText(QStringLiteral("223344"));
    });
    Camera::begin([=] { dialog->findChild<QPushButton *>(QStringLiteral("dial"))->click(); });
    Camera::await("the connection", [] { return State.callDirection == Outgoing; });
    pressButton("buttonWho");
    Camera::awaitJournal(QStringLiteral("ВЕГА"));
    pressButton("buttonAO");
    Camera::awaitJournal(QStringLiteral("ЗНАМЯ"));
    Camera::take(QStringLiteral("skk-manual"), mainWindow);
}
} // namespace

void switchedScene()
{
    Camera::awaitJournal(QStringLiteral("Соединено"));
    Camera::act(fillLists);
    takeList(&FormMain::openAbonents, "Абоненты", "abonents");
    takeList(&FormMain::openAbonentLists, "Списки", "abonent-lists");
    Hand::write(QStringLiteral("REX400"));
    Camera::take(QStringLiteral("editor-rex400"), mainWindow);
    Hand::write(QStringLiteral("Телеграмма с оформлением"));
    Camera::begin([] { mainWindow->editorPage->send->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Отправка телеграммы"));
    Camera::act([=] {
        dialog->findChild<QComboBox *>(QStringLiteral("number"))
            ->setEditText(QStringLiteral("334455,556677"));
    });
    Camera::take(QStringLiteral("sending-skk"), dialog);
    Hand::close(dialog);
    takeConnection();
    QWidget *options = Hand::openOptions();
    Hand::takeOption(options, 2, QStringLiteral("options-switched"));
}
