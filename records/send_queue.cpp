// The outgoing directory is the queue: whatever stands there under a queue name is to be sent, by whichever
// program put it there.

#include "app/options.h"
#include "app/state.h"
#include "records/send_model.h"
#include "text/utils.h"

#include <QDir>

namespace
{
enum Procedure { ProcedureCKS, ProcedureSKK };

constexpr int StampPosition = 13; // behind "yyyyMMddunnn."
constexpr int StampLength = 13;   // "yyMMdd_hhmmss"

QStringList listed(const QStringList &masks, QDir::SortFlags order)
{
    const QDir directory(State.pathOut());
    QStringList names;
    for (const QString &mask : masks)
        for (const QFileInfo &file : directory.entryInfoList({mask}, QDir::Files, order))
            names << file.fileName();
    return names;
}

CTableViewModelItem_Send itemAt(int position, const QString &fileName)
{
    CTableViewModelItem_Send item;
    item.N = CUtils::StringNNN(position);
    item.fileName = fileName;
    return item;
}

/// The queue of the centre and of the switched network, with its side-car records.
SendQueueScan scanWithRecords()
{
    // The first letter is Cyrillic: other programs name their files with it.
    const QStringList names = listed(
        {QStringLiteral("????????с???"), QStringLiteral("????????u???"), QStringLiteral("????????????.b*")},
        QDir::Name);
    SendQueueScan scan;
    for (int position = 0; position < names.size(); ++position) {
        CTableViewModelItem_Send item = itemAt(position, names.at(position));
        item.loadFromFile();
        const bool setAside = item.fileName.indexOf(QLatin1String(".b")) > 0;
        if (setAside)
            item.bad = true;
        const bool spent = Options.processMode == ProcedureSKK && item.trys == 0;
        (setAside || spent ? scan.bad : scan.good) << item;
    }
    return scan;
}

/// The queue of the direct link: the name holds the time of sending.
SendQueueScan scanWithStamps()
{
    // By extension, which is the time.
    const QStringList names =
        listed({QStringLiteral("????????u???.??????_??????"), QStringLiteral("????????g???.??????_??????")},
               QDir::Type);
    SendQueueScan scan;
    for (int position = 0; position < names.size(); ++position) {
        CTableViewModelItem_Send item = itemAt(position, names.at(position));
        // The two digits of the year are of this century.
        const QString stamp = QStringLiteral("20") + item.fileName.mid(StampPosition, StampLength);
        item.sendTime = QDateTime::fromString(stamp, QStringLiteral("yyyyMMdd_hhmmss"));
        scan.good << item;
    }
    return scan;
}

void bringUp(CTableViewModel_Send &model, const QList<CTableViewModelItem_Send> &items)
{
    model.setChecked();
    for (const CTableViewModelItem_Send &item : items) {
        if (model.unCheckItem(item))
            model.update(item);
        else
            model.append(item);
    }
}
} // namespace

SendQueueScan scanSendQueue()
{
    const bool records = Options.processMode == ProcedureCKS || Options.processMode == ProcedureSKK;
    return records ? scanWithRecords() : scanWithStamps();
}

int applySendQueue(const SendQueueScan &scan, CTableViewModel_Send &good, CTableViewModel_SendBad &bad)
{
    bringUp(good, scan.good);
    bringUp(bad, scan.bad);
    good.deleteChecked();
    bad.deleteChecked();
    good.sortValues();
    return scan.good.size() + scan.bad.size();
}
