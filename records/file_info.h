#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// The side-car record of a queue file: what its name cannot hold. Stored beside it, under its full name
/// with ".dat" added, as one line of seven fields parted by "|": number, "C" or "S", sendTime as
/// "dd.MM.yyyy hh:mm", "q" or "u", trys, "B" or "N", resultText.
class CFileInfo
{
public:
    /// Replaces \a path + ".dat" whole. True if something was written.
    bool Save(const QString &path) const;
    /// Reads \a path + ".dat". Without it, and with no ordinary file there: for the centre, now, one try, and
    /// false. What a torn or foreign file lacks comes back empty, 0, or as an invalid time.
    bool Load(const QString &path);
    /// Takes the fields of \a line, a record without or with its line end, up to the first zero byte.
    void takeLine(QByteArray line);
    /// Removes \a path + ".dat". False, with one journal line, if that is there and stays: it would become
    /// the record of the next file of that name.
    static bool Remove(const QString &path);

    QString number; ///< subscriber to call; empty for the centre
    int trys = 0;   ///< tries left
    bool toCKS = false;
    QDateTime sendTime; ///< earliest time of the next try
    bool qFlag = false; ///< stored, but never read back: false after each Load
    bool bad = false;   ///< the sending has failed for good
    QString resultText; ///< text of the last failure; lost by the reader if it holds "|"
    int reserved = 0;   ///< 0 after each Load; not in the file
};
