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
/// Opens the dialog of the perforator and has it do its work, once it can.
QWidget *startPerforator(QPushButton *CEditorPage::*button, const char *title)
{
    Camera::begin([=] { (mainWindow->editorPage->*button)->click(); });
    QWidget *dialog = Camera::awaitDialog(QString::fromUtf8(title));
    auto *start = dialog->findChild<QPushButton *>(QStringLiteral("start"));
    Camera::await("the perforator", [=] { return start->isEnabled(); });
    Camera::act([=] { start->click(); });
    return dialog;
}

void press(QWidget *dialog, const char *button)
{
    Camera::act([=] { dialog->findChild<QPushButton *>(QString::fromLatin1(button))->click(); });
}

/// The rest is not punched: it would keep the perforator.
void takePunch()
{
    QWidget *dialog = startPerforator(&CEditorPage::toPerforator, "Вывод на перфоратор");
    const auto *progress = dialog->findChild<QProgressBar *>(QStringLiteral("progress"));
    Camera::await("the punch", [=] { return progress->value() > progress->maximum() / 4; });
    Camera::take(QStringLiteral("perforator-out"), dialog);
    press(dialog, "stop");
    Hand::close(dialog);
}

void takeReader()
{
    QWidget *dialog = startPerforator(&CEditorPage::fromPerforator, "Ввод");
    const auto *text = dialog->findChild<QTextEdit *>(QStringLiteral("text"));
    Camera::await("the tape", [=] { return text->toPlainText().contains(QStringLiteral("НННН")); });
    press(dialog, "stop");
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
    takePunch();
    takeReader();
}
