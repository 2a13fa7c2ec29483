// The workstation with an operator inside, who works its window by keys and clicks. The environment says what
// he does:
//   OPERATOR_TYPES     types this text into the editor, "~" being the key Enter, and sends it
//   OPERATOR_INDEX     with this index, and
//   OPERATOR_NUMBERS   to these numbers
//   OPERATOR_KILL      is killed on the way: KILL_AT_STEP from the press of "Отправить" on, see
//   killing_call.cpp OPERATOR_READS     looks at the telegrams as they come
//   OPERATOR_SETS      changes the options each time that this file appears in the data directory, with
//                      lines "NAME=VALUE" by the names of the controls, in manual mode for so long
// He tells on standard output "editor: TEXT", "dialog: TEXT", "queued", "received: TEXT", "set", with "~" as
// line end.

#include "app/startup.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/io_model.h"
#include "ui/dialogs/options/options_dialog.h"
#include "ui/dialogs/send_tlg_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/editor_page.h"
#include "ui/widgets/telegram_view.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include <cstdio>

namespace
{
constexpr int LookMs = 100;

QString task(const char *name)
{
    return qEnvironmentVariable(name);
}

void tell(const char *what, QString text = QString())
{
    text.replace(QLatin1Char('\n'), QLatin1Char('~'));
    std::printf("%s%s\n", what, text.toUtf8().constData());
    std::fflush(stdout);
}

void type(QWidget *field, const QString &text)
{
    field->setFocus();
    for (const QChar letter : text)
        if (letter == QLatin1Char('~'))
            QTest::keyClick(field, Qt::Key_Return);
        else
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

/// Agrees to the sending when its dialog is open.
void agreeInDialog()
{
    auto *dialog = qobject_cast<CSendTlgDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr)
        return QTimer::singleShot(LookMs, agreeInDialog);
    tell("dialog: ", dialog->findChild<QPlainTextEdit *>()->toPlainText());
    if (auto *number = dialog->findChild<QComboBox *>(QStringLiteral("number")))
        type(number->lineEdit(), task("OPERATOR_NUMBERS"));
    QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("send")), Qt::LeftButton);
}

void sendTelegram()
{
    const CEditorPage &page = *mainWindow->editorPage;
    mainWindow->tabWidget->setCurrentWidget(mainWindow->editorPage);
    type(page.index, task("OPERATOR_INDEX"));
    QTest::keySequence(page.text, QKeySequence::SelectAll); // a former run may have left its draft
    type(page.text, task("OPERATOR_TYPES"));
    if (!task("OPERATOR_KILL").isEmpty())
        qputenv("KILL_AT_STEP", qgetenv("OPERATOR_KILL"));
    QTimer::singleShot(0, agreeInDialog);
    QTest::mouseClick(page.send, Qt::LeftButton);
    tell("editor: ", page.text->toPlainText());
    tell("queued");
}

/// Tells the text of each telegram on the list, again and again.
void readTelegrams()
{
    CArchivePage &page = *mainWindow->inputPage;
    mainWindow->tabWidget->setCurrentWidget(&page);
    for (int row = 0; row < page.table->model()->rowCount(); ++row) {
        page.table->selectRow(row);
        tell("received: ", page.text->toPlainText());
    }
    QTimer::singleShot(10 * LookMs, readTelegrams);
}

void setControl(QWidget *control, const QString &value)
{
    if (auto *group = qobject_cast<QGroupBox *>(control))
        group->setChecked(value == QLatin1String("true"));
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        line->setText(value);
    else if (auto *number = qobject_cast<QSpinBox *>(control))
        number->setValue(value.toInt());
    else if (auto *list = qobject_cast<QComboBox *>(control))
        list->setCurrentText(value);
}

void sayYes()
{
    auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (question != nullptr)
        QTest::mouseClick(question->button(QMessageBox::Yes), Qt::LeftButton);
}

void setOptions(const QStringList &orders)
{
    auto *dialog = qobject_cast<COptionsDialog *>(QApplication::activeModalWidget());
    for (const QString &order : orders)
        setControl(dialog->findChild<QWidget *>(order.section(QLatin1Char('='), 0, 0)),
                   order.section(QLatin1Char('='), 1));
    QTimer::singleShot(LookMs, sayYes);
    QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("apply")), Qt::LeftButton);
}

/// The options are for manual mode. A telegram on the line is waited for: its rest would go to the next one.
void obeyOrders()
{
    QTimer::singleShot(LookMs, obeyOrders);
    QFile file(task("OPERATOR_SETS"));
    if (QApplication::activeModalWidget() != nullptr || !file.exists())
        return;
    State.setAutomatic(false);
    if (!TlgThread.sendBuffer.mIsEmpty() || !TlgThread.allSent || !file.open(QIODevice::ReadOnly))
        return;
    const QStringList orders = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    file.remove();
    QTimer::singleShot(0, qApp, [orders] { setOptions(orders); });
    mainWindow->actionOptions->trigger();
    State.setAutomatic(true);
    tell("set");
}

void beginWork()
{
    if (mainWindow == nullptr || !mainWindow->isVisible())
        return QTimer::singleShot(LookMs, beginWork);
    if (!task("OPERATOR_TYPES").isEmpty())
        sendTelegram();
    if (!task("OPERATOR_READS").isEmpty())
        readTelegrams();
    if (!task("OPERATOR_SETS").isEmpty())
        obeyOrders();
}

void engageOperator()
{
    QTimer::singleShot(0, beginWork);
}
Q_COREAPP_STARTUP_FUNCTION(engageOperator)
} // namespace

int main(int argc, char *argv[])
{
    return endProcess(runVelda(argc, argv));
}
