#include "day_report.h"

#include "app/journal_words.h"

namespace
{
constexpr int SecondsPerDay = 86400;

void clean(QString &text)
{
    for (QChar &c : text)
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char('?');
}
} // namespace

int COutage::seconds() const
{
    const int end = to.isValid() ? QTime(0, 0).secsTo(to) : SecondsPerDay;
    return end - QTime(0, 0).secsTo(from);
}

int CDayReport::outageSeconds() const
{
    int seconds = 0;
    for (const COutage &outage : outages)
        seconds += outage.seconds();
    return seconds;
}

void CDayReport::makePrintable()
{
    for (QStringList *list : {&waiting, &failed, &notes})
        for (QString &line : *list)
            clean(line);
    for (COutage &outage : outages)
        clean(outage.why);
    for (CDisagreement &one : disagreements) {
        clean(one.where);
        clean(one.what);
    }
}

QString procedureWord(Procedure procedure)
{
    switch (procedure) {
    case CKS: return JournalWords::CentreWord;
    case SKK: return JournalWords::SwitchedWord;
    case Direct: return JournalWords::DirectWord;
    }
    return QString();
}
