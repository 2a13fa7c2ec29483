// Chapter of FormMain: the tabs of past and present days' telegrams.

#include "app/clock.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/search_page.h"

QWidget *FormMain::buildInputPage()
{
    return inputPage = new CArchivePage(CArchivePage::Incoming, Time.date);
}

QWidget *FormMain::buildOutputPage()
{
    return outputPage = new CArchivePage(CArchivePage::Outgoing, Time.date);
}

QWidget *FormMain::buildSearchPage()
{
    return searchPage = new CSearchPage;
}

void FormMain::printTextDialog(const QString &text)
{
    CPrintTxtDialog(text, this).exec();
}
