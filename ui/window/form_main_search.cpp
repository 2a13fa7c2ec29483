// Chapter of FormMain: the tab that finds telegrams of many days.

#include "app/clock.h"
#include "app/options.h"
#include "records/file_attr.h"
#include "text/filters.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"
#include "ui/pages/search_page.h"
#include "ui/widgets/telegram_view.h"
#include "ui/window/search_run.h"
#include "ui/window/shown_telegram.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

QWidget *FormMain::buildSearchPage()
{
    searchPage = new CSearchPage(modelSearch, Time.date);
    searchPage->found->text->setFont(Options.tlgFont);
    searchRun = new CSearchRun(this, modelSearch);
    connect(searchRun, &CSearchRun::progressed, this, &FormMain::showSearchCount);
    connect(searchPage->from, &QDateEdit::dateChanged, this, &FormMain::dateSearchFromChanged);
    connect(searchPage->to, &QDateEdit::dateChanged, this, &FormMain::dateSearchToChanged);
    connect(searchPage->search, &QPushButton::clicked, this, &FormMain::searchSearch);
    const CArchivePage *found = searchPage->found;
    connect(found->table, &CArchiveTable::rowChosen, this, &FormMain::searchFileSelectChanged);
    connect(found->registers, &QCheckBox::toggled, this, &FormMain::searchCheckBoxRegistersChanged);
    connect(found->toEditor, &QPushButton::clicked, this, &FormMain::searchToEditor);
    connect(found->print, &QPushButton::clicked, this, &FormMain::searchPrintText);
    return searchPage;
}

// The pickers have no maximum: it would be that of the day on which the program began.
void FormMain::dateSearchFromChanged()
{
    const QDate from = searchPage->from->date();
    if (from > Time.date)
        return searchPage->from->setDate(Time.date);
    if (searchPage->to->date() < from)
        searchPage->to->setDate(from);
    clearSearch();
}

void FormMain::dateSearchToChanged()
{
    const QDate to = searchPage->to->date();
    if (to > Time.date)
        return searchPage->to->setDate(Time.date);
    if (searchPage->from->date() > to)
        searchPage->from->setDate(to);
    clearSearch();
}

void FormMain::clearSearch()
{
    searchRun->stop();
    modelSearch.clear();
    searchPage->count->clear();
}

void FormMain::searchSearch()
{
    clearSearch();
    // The operator sees what is looked for: telegrams hold nothing else.
    const QString text = QStringClearNonMTK2(searchPage->contains->text());
    searchPage->contains->setText(text);
    searchRun->start({searchPage->from->date(), searchPage->to->date(), searchPage->received->isChecked(),
                      searchPage->sent->isChecked(), text});
}

void FormMain::showSearchCount()
{
    const QString count = QStringLiteral("Найдено: %1").arg(modelSearch.rowCount());
    switch (searchRun->outcome()) {
    case CSearchRun::None: searchPage->count->clear(); break;
    case CSearchRun::Running: searchPage->count->setText(count + QStringLiteral(", идёт поиск")); break;
    case CSearchRun::Whole: searchPage->count->setText(count); break;
    case CSearchRun::Cancelled: searchPage->count->setText(count + QStringLiteral(", поиск прерван")); break;
    }
}

void FormMain::searchFileSelectChanged()
{
    const int row = searchPage->found->table->selectedRow();
    if (row < 0)
        return;
    const QString path = modelSearch.pathAt(row);
    // Only the attribute: a mark in the name goes where the list shows it.
    CFileAttr(path).clearNew();
    openTelegram(path, searchShown, *searchPage->found);
}

void FormMain::update_PlainTextEdit_Search()
{
    showTelegram(searchShown, *searchPage->found);
}

void FormMain::searchCheckBoxRegistersChanged()
{
    update_PlainTextEdit_Search();
}

void FormMain::searchToEditor()
{
    openInEditor(shownTelegram(searchShown, *searchPage->found));
}

void FormMain::searchPrintText()
{
    printTextDialog(shownTelegram(searchShown, *searchPage->found));
}
