#include "app/whole_file.h"

#include "app/ordinary_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace
{
enum class Outcome { Done, NotWritten, NotReplaced };

/// Writes without emptying the file first: a kill leaves no less than what the new content replaces.
bool overwriteInPlace(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return openOrdinary(file, QIODevice::ReadWrite) && file.write(content) == content.size() &&
           file.flush() && file.resize(content.size());
}

/// The file that \a present stands for; a link stays one.
QString targetOf(const QFileInfo &present)
{
    if (!present.isSymLink())
        return present.filePath();
    return present.exists() ? present.canonicalFilePath() : present.symLinkTarget();
}

bool writeOut(QFile &draft, const QByteArray &content)
{
    const bool written = draft.write(content) == content.size() && draft.flush();
    if (written)
        syncToDisk(draft);
    draft.close();
    return written;
}

Outcome replace(const QFileInfo &present, const QByteArray &content)
{
    const QString target = targetOf(present);
    QFile draft(temporaryName(target));
    if (!draft.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return Outcome::NotReplaced;
    if (present.exists())
        draft.setPermissions(present.permissions());
    const bool written = writeOut(draft, content);
    if (written && moveOver(draft.fileName(), target))
        return Outcome::Done;
    draft.remove();
    return written ? Outcome::NotReplaced : Outcome::NotWritten;
}
} // namespace

bool replaceWholeFile(const QString &path, const QByteArray &content)
{
    const QFileInfo present(path);
    if (present.exists() && (!present.isFile() || !present.isWritable()))
        return false; // a rename would take the device's place
    Outcome outcome = replace(present, content);
    if (outcome == Outcome::NotReplaced) // another workstation in the same directory may have swept the draft
        outcome = replace(present, content);
    if (outcome == Outcome::NotReplaced)
        return present.exists() && overwriteInPlace(path, content);
    return outcome == Outcome::Done; // on a full disk the old content is the better one
}

bool writeNewFile(const QString &path, const QByteArray &content)
{
    QFile draft(temporaryName(path));
    if (!draft.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    // moveBeside() never takes the place of another file.
    if (writeOut(draft, content) && moveBeside(draft.fileName(), path))
        return true;
    draft.remove();
    return false;
}

QString temporaryName(const QString &path)
{
    QString name;
    do {
        const quint32 number = QRandomGenerator::global()->generate();
        name = path + QStringLiteral(".velda-%1").arg(number, 8, 16, QLatin1Char('0'));
    } while (QFile::exists(name));
    return name;
}
