// The outgoing directory is the queue: whatever stands there under a queue name is to be sent, by whichever
// program put it there.

#include "app/options.h"
#include "app/state.h"
#include "records/digits.h"
#include "records/send_model.h"
#include "text/utils.h"

#include <QDir>

namespace
{
constexpr int StampPosition = 13; // of "yyMMdd_hhmmss", behind "yyyyMMddunnn."
constexpr int Century = 2000;     // of the two digits of the year

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
        const bool spent = Options.processMode == SKK && item.trys == 0;
        (setAside || spent ? scan.bad : scan.good) << item;
    }
    return scan;
}

/// The time in a name that fits the mask; invalid if there is none. By hand, because reading it by a format
/// takes most of a scan.
QDateTime stampOf(const QString &fileName)
{
    const auto pair = [&fileName](int place) { return digitsAt(fileName, StampPosition + place, 2); };
    const int year = pair(0);
    if (year < 0) // which a date would take for the year before the first
        return QDateTime();
    const QDate date(Century + year, pair(2), pair(4));
    const QTime time(pair(7), pair(9), pair(11));
    return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
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
        item.sendTime = stampOf(item.fileName);
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
    const bool records = Options.processMode == CKS || Options.processMode == SKK;
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
