#include "tools/pictures/camera.h"
#include "tools/pictures/hand.h"
#include "tools/pictures/scenes.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>

namespace
{
void takePerforator()
{
    Camera::begin([] { mainWindow->editorPage->toPerforator->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Вывод на перфоратор"));
    Camera::await("the perforator",
                  [=] { return dialog->findChild<QPushButton *>(QStringLiteral("start"))->isEnabled(); });
    Camera::begin([=] { dialog->findChild<QPushButton *>(QStringLiteral("start"))->click(); });
    const auto *progress = dialog->findChild<QProgressBar *>(QStringLiteral("progress"));
    Camera::await("the punch", [=] { return progress->value() > progress->maximum() / 4; });
    Camera::take(QStringLiteral("perforator-out"), dialog);
    Hand::close(dialog);
    Camera::begin([] { mainWindow->editorPage->fromPerforator->click(); });
    dialog = Camera::awaitDialog(QStringLiteral("Ввод"));
    Camera::await("the reader",
                  [=] { return dialog->findChild<QPushButton *>(QStringLiteral("start"))->isEnabled(); });
    Camera::begin([=] { dialog->findChild<QPushButton *>(QStringLiteral("start"))->click(); });
    const auto *text = dialog->findChild<QTextEdit *>(QStringLiteral("text"));
    Camera::await("the tape", [=] { return text->toPlainText().contains(QStringLiteral("ПЕТРОВУ")); });
    Camera::take(QStringLiteral("perforator-in"), dialog);
}
} // namespace

void directScene()
{
    Camera::awaitJournal(QStringLiteral("Соединено"));
    Hand::write(QStringLiteral("Сообщение"));
    Camera::take(QStringLiteral("editor-message"), mainWindow);
    Camera::begin([] { mainWindow->editorPage->send->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Отправка сообщения"));
    Camera::take(QStringLiteral("sending-direct"), dialog);
    Hand::close(dialog);
    QWidget *options = Hand::openOptions();
    Hand::takeOption(options, 3, QStringLiteral("options-direct"));
    Hand::close(options);
    Hand::openTab(mainWindow->editorPage);
    takePerforator();
}
