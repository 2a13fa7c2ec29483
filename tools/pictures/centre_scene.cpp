#include "tools/pictures/camera.h"
#include "tools/pictures/hand.h"
#include "tools/pictures/scenes.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/search_page.h"
#include "ui/pages/send_page.h"
#include "ui/widgets/file_table.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace
{
void selectRow(QTableView *table, int rows)
{
    Camera::await("a telegram on the list", [=] { return table->model()->rowCount() >= rows; });
    Camera::act([=] { table->selectRow(0); });
}

/// How many telegrams the days of the folder have.
int files(const QString &folder)
{
    int count = 0;
    for (const QFileInfo &day : QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
        count += QDir(day.filePath()).entryList(QDir::Files).size();
    return count;
}

void takeDay()
{
    Camera::awaitJournal(QStringLiteral("Состояние РБ"));
    Camera::take(QStringLiteral("centre-opening"), mainWindow);
    Camera::tellFarEnd(QStringLiteral(
        "r П123=123 31 221202 \\r\\nКАЗАНЬ ПЕТРОВУ=\\r\\nПОДТВЕРДИТЕ ПРИЕМ ЭТОЙ ТЕЛЕГРАММЫ=\\r\\n"));
    QWidget *confirm = Camera::awaitDialog(QStringLiteral("Подтверждение приема Р"));
    Camera::take(QStringLiteral("confirm-r"), confirm);
    Camera::begin([=] { confirm->findChild<QPushButton *>(QStringLiteral("confirm"))->click(); });
    Camera::await("the incoming telegrams", [] { return files(QStringLiteral("inp")) >= 4; });
    Camera::await("the sent telegrams", [] { return files(QStringLiteral("out")) >= 3; });
    Camera::take(QStringLiteral("window"), mainWindow);
    Camera::act([] { mainWindow->findChild<QAbstractButton *>(QStringLiteral("protocolMore"))->click(); });
    Camera::take(QStringLiteral("tab-protocol"), mainWindow);
}

void takeArchive()
{
    const CArchivePage &received = *mainWindow->inputPage;
    Hand::openTab(mainWindow->inputPage);
    selectRow(received.table, 4);
    Camera::take(QStringLiteral("tab-input"), mainWindow);
    Camera::begin([&] { received.forward->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Пересылка телеграммы"));
    Camera::act([=] {
        dialog->findChild<QComboBox *>(QStringLiteral("index"))->setEditText(QStringLiteral("654321"));
    });
    Camera::take(QStringLiteral("forward"), dialog);
    Hand::close(dialog);
    Camera::begin([&] { received.print->click(); });
    dialog = Camera::awaitDialog(QStringLiteral("Печать текста"));
    Camera::take(QStringLiteral("print"), dialog);
    Hand::close(dialog);

    Hand::openTab(mainWindow->outputPage);
    selectRow(mainWindow->outputPage->table, 3);
    Camera::take(QStringLiteral("tab-output"), mainWindow);

    const CSearchPage &search = *mainWindow->searchPage;
    Hand::openTab(mainWindow->searchPage);
    Camera::begin([&] {
        search.contains->setText(QStringLiteral("КАЗАНЬ"));
        search.search->click();
    });
    selectRow(search.found->table, 1);
    Camera::await("the end of the search", [&] { return search.search->isVisible(); });
    Camera::take(QStringLiteral("tab-search"), mainWindow);
}

void takeForms()
{
    Hand::write(QStringLiteral("Телеграмма"));
    Camera::take(QStringLiteral("editor-telegram"), mainWindow);
    Hand::write(QStringLiteral("Международная телеграмма"));
    Camera::take(QStringLiteral("editor-international"), mainWindow);
    Hand::write(QStringLiteral("Телеграмма с оформлением"));
    Camera::take(QStringLiteral("editor-full"), mainWindow);
    Camera::begin([] { mainWindow->editorPage->send->click(); });
    QWidget *dialog = Camera::awaitDialog(QStringLiteral("Отправка телеграммы"));
    Camera::take(QStringLiteral("sending-cks"), dialog);
    Hand::close(dialog);
}

void takeOptions()
{
    struct Page {
        int number;
        const char *name;
    };
    QWidget *options = Hand::openOptions();
    for (const Page &page : {Page{0, "options-link"}, Page{1, "options-centre"}, Page{4, "options-files"},
                             Page{5, "options-print"}, Page{6, "options-start"}, Page{7, "options-look"},
                             Page{8, "options-sounds"}, Page{9, "options-editor"}, Page{10, "options-other"}})
        Hand::takeOption(options, page.number, QString::fromLatin1(page.name));
    Hand::close(options);
}
} // namespace

void centreScene()
{
    takeDay();
    takeArchive();
    takeForms();
    takeOptions();
    Hand::openTab(mainWindow->sendPage);
    // In manual mode they wait.
    Camera::act([] {
        for (const QString &name : QDir(QStringLiteral("later")).entryList(QDir::Files))
            QFile::rename(QStringLiteral("later/") + name, QStringLiteral("out/") + name);
    });
    selectRow(mainWindow->sendPage->tableSend, 2);
    Camera::take(QStringLiteral("tab-send"), mainWindow);
}
