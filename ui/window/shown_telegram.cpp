#include "ui/window/shown_telegram.h"

#include "text/utils.h"
#include "ui/pages/archive_page.h"
#include "ui/widgets/telegram_view.h"

#include <QCheckBox>

QString shownTelegram(const ShownText &telegram, const CArchivePage &page)
{
    const QString &text = telegram.text;
    return CUtils::removeService(page.registers->isChecked() ? text : CUtils::removeRegisters(text));
}

void showTelegram(const ShownText &telegram, CArchivePage &page)
{
    const QString shown = shownTelegram(telegram, page);
    if (telegram.trouble.isEmpty())
        page.text->showForm(shown);
    else
        page.text->showTrouble(telegram.trouble);
    page.setTextActions(!shown.isEmpty());
}

void openTelegram(const QString &path, ShownText &telegram, CArchivePage &page)
{
    telegram = readShownText(path);
    page.text->clear(); // the next one begins at its top
    showTelegram(telegram, page);
}
