#include "tools/pictures/camera.h"
#include "tools/pictures/hand.h"
#include "tools/pictures/scenes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QThread>

namespace
{
constexpr unsigned long AdapterSeconds = 3; ///< from the end of the line's link to its configuration
} // namespace

void nervaScene()
{
    Camera::awaitJournal(QStringLiteral("Соединено"));
    QWidget *options = Hand::openOptions();
    Camera::begin(
        [=] { options->findChild<QAbstractButton *>(QStringLiteral("adapterConfigure"))->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Nerva"));
    QThread::sleep(AdapterSeconds);
    auto *read = dialog->findChild<QPushButton *>(QStringLiteral("read"));
    Camera::await("the adapter", [=] { return read->isEnabled(); });
    Camera::begin([=] { read->click(); });
    const auto *log = dialog->findChild<QPlainTextEdit *>(QStringLiteral("log"));
    Camera::await("the adapter's settings",
                  [=] { return log->toPlainText().contains(QStringLiteral("{v:")); });
    Camera::awaitDialog(QStringLiteral("Nerva"));
    Camera::take(QStringLiteral("nerva-config"), dialog);
}

void adapterScene()
{
    Camera::awaitJournal(QStringLiteral("Соединено"));
    QWidget *options = Hand::openOptions();
    Camera::begin([=] {
        QApplication::postEvent(
            options, new QKeyEvent(QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier));
    });
    Camera::take(QStringLiteral("firmware"), Camera::awaitDialog(QStringLiteral("Firmware update")));
}
