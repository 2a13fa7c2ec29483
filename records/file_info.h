#pragma once

#include <QDateTime>
#include <QString>

/// The side-car record of a queue file: what its name cannot hold. Stored beside it, under its full name
/// with ".dat" added, as one line of seven fields parted by "|".
class CFileInfo
{
public:
    /// Replaces \a path + ".dat" whole. True if something was written.
    bool Save(const QString &path) const;
    /// Reads \a path + ".dat". Without it: for the centre, now, one try, and false.
    bool Load(const QString &path);
    /// Removes \a path + ".dat".
    static void Remove(const QString &path);

    QString number; ///< subscriber to call; empty for the centre
    int trys = 0;   ///< tries left
    bool toCKS = false;
    QDateTime sendTime; ///< earliest time of the next try
    bool qFlag = false;
    bool bad = false; ///< the sending has failed for good
    QString resultText;
    int reserved = 0;
};
