#include "tools/pictures/hand.h"

#include "app/options.h"
#include "app/state.h"
#include "tools/pictures/camera.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

namespace
{
void fill(QLineEdit *line, const char *words)
{
    line->setText(QString::fromUtf8(words));
    line->setCursorPosition(0);
}

void fillRussian(CEditorPage &page)
{
    page.index->setText(QStringLiteral("654321"));
    fill(page.from, "МОСКВА 12");
    fill(page.marks, "УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ");
    fill(page.address, "КАЗАНЬ УЛ БАУМАНА 14 ПЕТРОВУ");
    page.text->setPlainText(
        QStringLiteral("ПРИБЫВАЕМ ПЯТНИЦУ ПОЕЗД 24 ВАГОН 6\nПРОСИМ ВСТРЕТИТЬ ГРУППУ 12 ЧЕЛОВЕК"));
    fill(page.pScript, "ИВАНОВА");
}

void fillLatin(CEditorPage &page)
{
    page.index->setText(QStringLiteral("654321"));
    fill(page.fTo, "PARIS");
    fill(page.fFrom, "MOSKVA");
    fill(page.address, "DUPONT 14 RUE LAFAYETTE PARIS");
    page.text->setPlainText(QStringLiteral("ARRIVING FRIDAY TRAIN 24\nPLEASE MEET GROUP OF 12"));
    fill(page.pScript, "IVANOVA");
}
} // namespace

void Hand::openTab(QWidget *page)
{
    Camera::act([&] { mainWindow->tabWidget->setCurrentWidget(page); });
}

void Hand::close(QWidget *dialog)
{
    Camera::act([=] { qobject_cast<QDialog *>(dialog)->reject(); });
}

void Hand::setManual(bool manual)
{
    Camera::act([=] { State.setAutomatic(!manual); });
}

void Hand::write(const QString &form)
{
    openTab(mainWindow->editorPage);
    Camera::act([&] {
        CEditorPage &page = *mainWindow->editorPage;
        const int index = page.form->findText(form);
        page.form->setCurrentIndex(index);
        emit page.form->activated(index);
        if (form.startsWith(QStringLiteral("Международная")))
            fillLatin(page);
        else
            fillRussian(page);
    });
}

QWidget *Hand::openOptions()
{
    setManual(true);
    Camera::begin([] { mainWindow->actionOptions->trigger(); });
    return Camera::awaitDialog(QStringLiteral("Параметры"));
}

void Hand::takeOption(QWidget *options, int page, const QString &name)
{
    Camera::act([=] { options->findChild<QTabWidget *>(QStringLiteral("tabs"))->setCurrentIndex(page); });
    Camera::take(name, options);
}
