#include "records/whole_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{
/// Writes without emptying the file first: a kill leaves no less than what the new content replaces.
bool overwriteInPlace(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || file.write(content) != content.size() || !file.flush())
        return false;
    return file.isSequential() || file.resize(content.size());
}
} // namespace

bool replaceWholeFile(const QString &path, const QByteArray &content)
{
    const QFileInfo present(path);
    if (present.exists() && !present.isFile()) // a rename would take the device's place
        return overwriteInPlace(path, content);
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        // The flush stands by itself because commit() overlooks a failure of the last buffered bytes. On a
        // full disk the old content is the better one.
        if (file.write(content) != content.size() || !file.flush())
            return false;
        if (file.commit())
            return true;
    }
    return present.exists() && overwriteInPlace(path, content);
}
