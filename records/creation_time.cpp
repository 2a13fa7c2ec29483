#include "records/creation_time.h"

#include <QFileInfo>

QDateTime creationTime(const QFileInfo &file)
{
    QDateTime oldest = file.birthTime();
    if (oldest.isValid())
        return oldest;
    // None of these is before the birth, unless somebody has set it so; the oldest is the nearest to it. The
    // change of the entry, which no program can set back, alone would be that of the last renaming.
    for (const QDateTime &time : {file.lastModified(), file.metadataChangeTime(), file.lastRead()})
        if (time.isValid() && (!oldest.isValid() || time < oldest))
            oldest = time;
    return oldest;
}
