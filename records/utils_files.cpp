#include "app/journal_words.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "records/file_attr.h"
#include "records/protocol.h"
#include "text/utils.h"

#include <QDir>
#include <QFile>

namespace
{
QString dateName(const QDate &date)
{
    return date.toString(QStringLiteral("yyyyMMdd"));
}

void note(const QString &text)
{
    Log.addCacheServiceString(text, ProtocolInfo, true);
}
} // namespace

bool CUtils::renameFile(QString from, QString toDir, QString toName, bool markNew)
{
    const QString target = toDir + QDir::separator() + toName;
    note(JournalWords::Renaming + shownName(from) + JournalWords::RenamingTo + shownName(target));
    if (!moveBeside(from, target)) {
        QDir().mkdir(toDir);
        if (!moveBeside(from, target)) {
            Log.addCacheServiceString(JournalWords::RenamingFailed, ProtocolError, true);
            return false;
        }
    }
    if (markNew)
        CFileAttr(target).setNew();
    return true;
}

int CUtils::clearDir(QString root, const QDate &limit)
{
    // A link to a directory is none of ours: what it leads to must not be emptied.
    const QStringList names = QDir(root).entryList(
        {QStringLiteral("????????")}, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks, QDir::Name);
    const QString last = dateName(limit);
    int removed = 0;
    for (const QString &name : names) {
        if (name > last)
            continue;
        const QString path = root + QLatin1Char('/') + name;
        note(JournalWords::RemovedDirectory + shownName(path));
        if (QDir(path).removeRecursively())
            ++removed;
    }
    return removed;
}

void CUtils::clearInDir(QString root, const QDate &limit)
{
    const QDir dir(root);
    const QString last = dateName(limit);
    for (const QString &name : dir.entryList({QStringLiteral("????????.prt")}, QDir::Files, QDir::Name)) {
        // The journal of the limit date itself stays: its name, with ".prt", stands above the bare date.
        if (last < name)
            continue;
        note(JournalWords::Removed + shownName(name));
        QFile::remove(root + QLatin1Char('/') + name);
    }
}

QString CUtils::checkAndMakeRelativePath(QString path)
{
    // On Windows the program's own path has both separators, and the choice of a file brings slashes.
    const bool isBelow =
        QDir::fromNativeSeparators(path).startsWith(QDir::fromNativeSeparators(Options.appPath));
    return isBelow ? path.mid(Options.appPath.size()) : path;
}
