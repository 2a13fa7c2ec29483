#include "centre_figures.h"

#include "procedures/centre_words.h"
#include "received_side.h"
#include "sent_side.h"
#include "text/utils.h"

namespace
{
/// The last time of the day's start in which a receipt may still carry the figures of the old day.
const QTime GraceEnd(0, 7);

/// A service message of the centre with two figures.
struct Figures {
    int one = -1;
    int other = -1;
    CPlace place; ///< nowhere: there is none
};

bool readFigures(const CLineMessage &message, const QString &form, Figures &figures)
{
    if (message.number >= 0 || message.end.isNowhere())
        return false;
    QString w1;
    QString w2;
    QString w3;
    Figures read;
    if (CUtils::testTemplate(form, CUtils::removeRegisters(message.text), &read.one, &read.other, &w1, &w2,
                             &w3) < 2)
        return false;
    figures = read;
    figures.place = message.end;
    return true;
}

/// When the journal was at \a place: the time of the next event.
QTime timeAt(const CDayRecord &record, const CPlace &place)
{
    for (const CJournalLine &line : record.journal.lines)
        if (line.number >= place.line && line.isService())
            return line.time();
    return QTime(23, 59, 59);
}

Figures lastReceipt(const CDayRecord &record)
{
    Figures last;
    for (const CLineMessage &message : record.received)
        if (message.end.date == record.date)
            (void)readFigures(message, CentreWords::Receipt, last);
    if (!last.place.isNowhere() && timeAt(record, last.place) < GraceEnd)
        return Figures();
    return last;
}

void checkReceipt(const CDayRecord &record, const CReceivedSide &received, const CSentSide &sent,
                  CDayReport &report)
{
    const Figures receipt = lastReceipt(record);
    if (receipt.place.isNowhere())
        return;
    report.centreHolds = receipt.one;
    report.centreSent = receipt.other;
    const int ours = sent.counterAt(receipt.place);
    const int theirs = received.counterAt(receipt.place);
    if (receipt.one != ours || receipt.other != theirs)
        report.disagree(receipt.place.shown(),
                        QStringLiteral("квитанция центра ВАШ %1 НАШ %2, а по книгам передано %3, принято %4")
                            .arg(shownNumber(receipt.one), shownNumber(receipt.other), shownNumber(ours),
                                 shownNumber(theirs)));
}

void checkRenumbering(const CDayRecord &record, const CReceivedSide &received, const CSentSide &sent,
                      CDayReport &report)
{
    Figures figures;
    for (const CLineMessage &message : record.received)
        if (message.end.date == record.date.addDays(1) &&
            readFigures(message, CentreWords::Renumbering, figures))
            break;
    if (figures.place.isNowhere())
        return;
    report.dayTaken = figures.one;
    report.dayGiven = figures.other;
    const CPlace end = {record.date.addDays(1), 0};
    const int ours = sent.counterAt(end);
    const int theirs = received.counterAt(end);
    if (figures.one != ours || figures.other != theirs)
        report.disagree(
            figures.place.shown(),
            QStringLiteral("цифры центра за сутки ПРИН %1 ПЕР %2, а по книгам передано %3, принято %4")
                .arg(figures.one)
                .arg(figures.other)
                .arg(ours)
                .arg(theirs));
}
} // namespace

void checkCentreFigures(const CDayRecord &record, const CReceivedSide &received, const CSentSide &sent,
                        CDayReport &report)
{
    if (record.procedure != CKS)
        return;
    checkReceipt(record, received, sent, report);
    checkRenumbering(record, received, sent, report);
}
