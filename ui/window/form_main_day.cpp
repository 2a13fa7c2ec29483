// Chapter of FormMain: the change of day.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/roll/protocol_widget.h"

void FormMain::checkDayChange()
{
    // Any other date is a change, also an earlier one.
    if (Time.yyyyMMdd == State.YYYYMMDD)
        return;
    Log.addCacheServiceString(QStringLiteral("Смена суток"), ProtocolInfo, true);
    State.newDay();
    Options.newDay();
    Log.Load();
    Log.addCacheServiceString(QStringLiteral("Протокол открыт"), ProtocolInfo, false);
    slotNewDay();
}

void FormMain::slotNewDay()
{
    inputPage->setToday(Time.date);
    outputPage->setToday(Time.date);
    protocolWidget->setDate(Time.date);
    const QDate limit = Time.date.addDays(-qint64(Options.keepFilesDays));
    CUtils::clearDir(State.pathInp(), limit);
    CUtils::clearDir(State.pathOut(), limit);
    CUtils::clearInDir(State.pathPrt(), limit);
}
