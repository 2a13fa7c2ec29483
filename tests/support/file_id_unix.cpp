#include "tests/support/file_id.h"

#include <QFile>

#include <sys/stat.h>

quint64 fileId(const QString &path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}
