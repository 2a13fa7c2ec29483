#include "ui/pages/search_page.h"

#include "ui/widgets/layouts.h"

CSearchPage::CSearchPage(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("tabSearch"));
    setLayout(newVBoxLayout());
}
