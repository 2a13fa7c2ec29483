// The new-mark where files have no archive attribute: an extended attribute holds the archive bit, "0" for
// a new file and "1" for one that was opened. On a file system without extended attributes an empty hidden
// file ".NAME.new" beside the file says that it is new. A file with neither is not new.

#include "records/file_attr.h"

#include "app/ordinary_file.h"

#include <QFile>
#include <QFileInfo>

#include <sys/xattr.h>

namespace
{
constexpr char AttributeName[] = "user.velda.archive";
constexpr char ArchiveOff = '0';
constexpr char ArchiveOn = '1';

bool setArchive(const QString &path, char value)
{
    return setxattr(QFile::encodeName(path).constData(), AttributeName, &value, 1, 0) == 0;
}

QString markerFile(const QString &path)
{
    const QFileInfo info(path);
    return info.path() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".new");
}
} // namespace

CFileAttr::CFileAttr(const QString &path) : m_path(path) {}

bool CFileAttr::checkNew() const
{
    char value = ArchiveOn;
    if (getxattr(QFile::encodeName(m_path).constData(), AttributeName, &value, 1) == 1)
        return value == ArchiveOff;
    return QFile::exists(markerFile(m_path)) && QFile::exists(m_path); // most files have no such mark
}

void CFileAttr::setNew() const
{
    if (setArchive(m_path, ArchiveOff) || !QFile::exists(m_path))
        return;
    QFile marker(markerFile(m_path));
    (void)openOrdinary(marker, QIODevice::WriteOnly | QIODevice::Append); // else the file counts as seen
}

void CFileAttr::clearNew() const
{
    setArchive(m_path, ArchiveOn);
    QFile::remove(markerFile(m_path));
}
