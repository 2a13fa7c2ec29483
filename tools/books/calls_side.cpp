#include "calls_side.h"

#include <QSet>

namespace
{
struct Side {
    const QStringList &files;
    QString directory;
    CSideReport &report;
};

/// "inp/20261122/s101112": the last parts of a path, which tell the side, too.
QString tail(const QString &path)
{
    return path.section(QLatin1Char('/'), -3);
}

void checkSide(CDayReport &report, const Side &side, QSet<QString> &told)
{
    for (const QString &name : side.files) {
        if (!isTranscript(name))
            continue;
        ++side.report.calls;
        const QString path = tail(side.directory + QLatin1Char('/') + withoutNewMark(name));
        if (!told.remove(path))
            report.disagree(path, QStringLiteral("соединение есть, а в протоколе его нет"));
    }
}
} // namespace

void checkCalls(const CDayRecord &record, CDayReport &report)
{
    QSet<QString> told;
    QMap<QString, CJournalEvent> lines;
    for (const CJournalEvent &event : record.events) {
        if (event.kind != CJournalEvent::CallSaved || !record.isOfDay(event.name))
            continue;
        const QString path = tail(event.name);
        if (lines.contains(path))
            report.disagree(event.place.shown(),
                            QStringLiteral("соединение %1 записано поверх прежнего, строка %2")
                                .arg(path)
                                .arg(lines[path].place.line));
        told.insert(path);
        lines[path] = event;
    }
    checkSide(report, {record.receivedFiles, record.directory.received(record.date), report.received}, told);
    checkSide(report, {record.sentFiles, record.directory.sent(record.date), report.sent}, told);
    if (report.filesExpired)
        return;
    for (const QString &path : lines.keys())
        if (told.contains(path))
            report.disagree(lines[path].place.shown(),
                            QStringLiteral("соединение %1 записано, а файла нет").arg(path));
}
