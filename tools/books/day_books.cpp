#include "day_books.h"

#include "calls_side.h"
#include "centre_figures.h"
#include "day_record.h"
#include "day_times.h"
#include "queue_side.h"
#include "received_side.h"
#include "sent_side.h"

#include <QFileInfo>
#include <QThread>

namespace
{
void checkJournal(const CDayRecord &record, CDayReport &report)
{
    for (const int line : record.journal.damaged)
        report.disagree(CPlace{record.date, line}.shown(),
                        QStringLiteral("строка протокола повреждена: не UTF-8 или нулевые байты"));
    const int files = record.receivedFiles.size() + record.sentFiles.size();
    if (!record.journal.exists && files > 0)
        report.disagree(record.journal.name, QStringLiteral("протокола нет, а файлов за день %1").arg(files));
}
} // namespace

QString CDayBooks::fault(const QDate &date) const
{
    const QFileInfo journal(m_directory.journal(date));
    if (journal.exists() && !(journal.isFile() && journal.isReadable()))
        return QStringLiteral("протокол не читается: ") + journal.filePath();
    for (const QString &path : {m_directory.received(date), m_directory.sent(date)}) {
        const QFileInfo directory(path);
        if (directory.isDir() && !(directory.isReadable() && directory.isExecutable()))
            return QStringLiteral("каталог не читается: ") + path;
    }
    return QString();
}

/// Whether the telegrams of \a date are older than the workstation keeps them. Journals stay a day longer.
bool CDayBooks::hasExpired(const QDate &date) const
{
    const QList<QDate> days = m_directory.days();
    return !days.isEmpty() && date <= days.last().addDays(-m_directory.keepFilesDays());
}

CDayReport CDayBooks::look(const QDate &date) const
{
    const CDayRecord record(m_directory, date);
    CDayReport report;
    report.date = date;
    report.procedure = record.procedure;
    report.journalLines = record.journal.lines.size();
    report.filesExpired = !record.hasReceivedFiles && !record.hasSentFiles && hasExpired(date);
    checkJournal(record, report);
    reckonTimes(record, report);
    if (record.journal.exists)
        reconcile(record, report);
    report.makePrintable();
    return report;
}

void CDayBooks::reconcile(const CDayRecord &record, CDayReport &report) const
{
    CReceivedSide received(record, report);
    CSentSide sent(record, report);
    received.check();
    sent.check();
    checkCalls(record, report);
    checkCentreFigures(record, received, sent, report);
    if (m_directory.days().last() == record.date) // the queue is that of today
        checkQueue(record, report);
}

CDayReport CDayBooks::report(const QDate &date) const
{
    CDayReport latest = look(date);
    for (int i = 1; i < looks && !latest.agrees() && m_directory.isLocked(); ++i) {
        const QVector<CDisagreement> former = latest.disagreements;
        QThread::msleep(static_cast<unsigned long>(pauseMilliseconds));
        latest = look(date);
        QVector<CDisagreement> held;
        for (const CDisagreement &one : qAsConst(latest.disagreements))
            if (former.contains(one))
                held.append(one);
        latest.disagreements = held;
    }
    return latest;
}
