#include "queue_side.h"

#include "app/ordinary_file.h"
#include "records/file_info.h"

#include <QDir>
#include <QRegularExpression>

namespace
{
const QString RecordEnding = QStringLiteral(".dat");
constexpr qint64 LargestRecord = 1 << 16; // bytes
constexpr int FewestFields = 7;

bool isQueueName(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^.{8}[uсg].{3}(\\.\\d{6}_\\d{6})?$"));
    return form.match(name).hasMatch();
}

QString shown(const CDayRecord &record, const QString &name)
{
    return QDir(record.directory.path()).relativeFilePath(record.directory.queue()) + QLatin1Char('/') + name;
}

/// The record of \a name. Nothing if there is none, or if it is torn, which is reported.
bool readRecord(const CDayRecord &record, const QString &name, CFileInfo &info, CDayReport &report)
{
    const QString path = record.directory.queue() + QLatin1Char('/') + name + RecordEnding;
    const std::optional<QByteArray> line = readOrdinary(path, LargestRecord);
    if (!line)
        return false;
    info.takeLine(*line);
    const bool isTorn = line->count('|') + 1 < FewestFields || !info.sendTime.isValid();
    if (isTorn)
        report.disagree(shown(record, name + RecordEnding), QStringLiteral("запись о файле повреждена"));
    return !isTorn;
}

/// Why the centre did not take the file; what stands behind ".b" is its number.
QString refusal(const CDayRecord &record, const QString &name)
{
    for (const CJournalEvent &event : record.events)
        if (event.kind == CJournalEvent::Renamed && event.targetName() == name)
            return QStringLiteral("центр не принял, %1").arg(event.place.shown());
    return QStringLiteral("центр не принял");
}

void takeFile(const CDayRecord &record, const QString &name, CDayReport &report)
{
    if (name.contains(QStringLiteral(".b"))) {
        report.failed << name + QStringLiteral(": ") + refusal(record, name);
        return;
    }
    if (!isQueueName(name))
        return;
    CFileInfo info;
    const bool hasRecord = readRecord(record, name, info, report);
    const bool hasFailed = hasRecord && record.procedure == SKK && (info.bad || info.trys == 0);
    const QString why = info.resultText.isEmpty() ? QStringLiteral("попытки исчерпаны") : info.resultText;
    if (hasFailed)
        report.failed << name + QStringLiteral(": ") + why;
    else if (hasRecord && !info.resultText.isEmpty())
        report.waiting << name + QStringLiteral(" (") + info.resultText + QLatin1Char(')');
    else
        report.waiting << name;
}
} // namespace

void checkQueue(const CDayRecord &record, CDayReport &report)
{
    for (const QString &name : record.queueFiles) {
        if (!name.endsWith(RecordEnding)) {
            takeFile(record, name, report);
            continue;
        }
        // The record without a name is what a sending leaves behind on a switched network.
        const QString file = name.chopped(RecordEnding.size());
        if (!file.isEmpty() && !record.queueFiles.contains(file))
            report.disagree(shown(record, name), QStringLiteral("запись о файле, которого в очереди нет"));
    }
}
