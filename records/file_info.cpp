#include "records/file_info.h"

#include "app/clock.h"
#include "app/ordinary_file.h"
#include "app/whole_file.h"
#include "records/protocol.h"

#include <QFileInfo>
#include <QStringList>

namespace
{
constexpr qint64 LongestLine = 1 << 16; // of a foreign file; an own record is far below

QString sideCar(const QString &path)
{
    return path + QStringLiteral(".dat");
}
} // namespace

bool CFileInfo::Save(const QString &path) const
{
    const QStringList fields = {number,
                                toCKS ? QStringLiteral("C") : QStringLiteral("S"),
                                sendTime.toString(CTime::formatDD_MM_YYYY_HH_MM),
                                qFlag ? QStringLiteral("q") : QStringLiteral("u"),
                                QString::number(trys),
                                bad ? QStringLiteral("B") : QStringLiteral("N"),
                                resultText};
    return replaceWholeFile(sideCar(path), fields.join(QLatin1Char('|')).toUtf8());
}

bool CFileInfo::Load(const QString &path)
{
    *this = CFileInfo();
    bad = true;
    QFile file(sideCar(path));
    if (!openOrdinary(file, QIODevice::ReadOnly)) {
        // A telegram that another program dropped: for the centre, now, once.
        toCKS = true;
        sendTime = Time.dateTime;
        trys = 1;
        bad = false;
        return false;
    }
    takeLine(file.readLine(LongestLine));
    return true;
}

bool CFileInfo::Remove(const QString &path)
{
    const QString record = sideCar(path);
    if (QFile::remove(record) || !QFileInfo::exists(record))
        return true;
    Log.addCacheServiceString(QStringLiteral("Ошибка удаления ") + shownName(record), ProtocolError, true);
    return false;
}
