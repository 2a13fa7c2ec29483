#include "app/run/user_data.h"

#include "app/options.h"
#include "records/protocol.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
const QString Sounds = QStringLiteral("sound");
const QString Unfinished = QStringLiteral("sound.velda-part"); // what a start left that was killed meanwhile
const QString Manuals = QStringLiteral("docs");

void tellMissing(const QString &name)
{
    Log.addCacheServiceString(QStringLiteral("Нет записи в каталог данных: %1").arg(name), ProtocolError,
                              false);
}

bool copyFiles(const QDir &from, const QDir &to)
{
    for (const QString &name : from.entryList(QDir::Files)) {
        if (!QFile::copy(from.filePath(name), to.filePath(name)))
            return false;
        // The original may be anybody's to read only; the copy is the operator's to replace.
        QFile::setPermissions(to.filePath(name), QFile::permissions(to.filePath(name)) | QFile::WriteOwner);
    }
    return true;
}

/// The folder appears under its name when it is whole: a start that is killed leaves nothing half done.
void copySounds(const QDir &shared)
{
    QDir data(Options.appPath);
    QDir(data.filePath(Unfinished)).removeRecursively();
    if (QFileInfo::exists(data.filePath(Sounds)))
        return;
    if (data.mkdir(Unfinished) && copyFiles(shared.filePath(Sounds), data.filePath(Unfinished)) &&
        data.rename(Unfinished, Sounds))
        return;
    QDir(data.filePath(Unfinished)).removeRecursively();
    tellMissing(Sounds);
}

/// False if \a name is neither there nor could be linked to \a target.
bool linkManual(const QString &name, const QString &target)
{
    const QFileInfo present(name);
    if (present.exists())
        return true;
    if (present.isSymLink()) // to a manual that has gone
        QFile::remove(name);
    return QFile::link(target, name);
}

void linkManuals(const QDir &shared)
{
    const QDir manuals(shared.filePath(Manuals));
    const QDir data(Options.appPath);
    for (const QString &name : manuals.entryList({QStringLiteral("*.pdf")}, QDir::Files)) {
        const QString link = Manuals + QLatin1Char('/') + name;
        if (!data.mkpath(Manuals) || !linkManual(data.filePath(link), manuals.filePath(name)))
            tellMissing(link);
    }
}
} // namespace

QString sharedDirectory(const QString &programDirectory)
{
    const QString shared = QDir::cleanPath(programDirectory + QStringLiteral("/../share/velda"));
    return QFileInfo(shared + QLatin1Char('/') + Sounds).isDir() ? shared : QString();
}

QString userDataDirectory()
{
    QString home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (QDir::isRelativePath(home)) // a variable without a whole path counts as not set
        home = QDir::home().filePath(QStringLiteral(".local/share"));
    return QDir::cleanPath(home) + QStringLiteral("/velda");
}

void furnishDataDirectory(const QString &shared)
{
    copySounds(QDir(shared));
    linkManuals(QDir(shared));
}
