#include "app/ordinary_file.h"

#include <QFileInfo>

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr mode_t NewFileMode = 0666; // less the process's mask

int accessOf(QIODevice::OpenMode mode)
{
    if (mode.testFlag(QIODevice::Append))
        return O_WRONLY | O_APPEND | O_CREAT;
    return mode.testFlag(QIODevice::WriteOnly) ? O_RDWR : O_RDONLY;
}
} // namespace

bool openOrdinary(QFile &file, QIODevice::OpenMode mode)
{
    const QByteArray path = QFile::encodeName(file.fileName());
    struct stat status = {};
    // The look before spares a device the opening, which resets an adapter; the one after is the one to
    // trust.
    if (stat(path.constData(), &status) == 0 && !S_ISREG(status.st_mode))
        return false;
    const int fd = open(path.constData(), accessOf(mode) | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, NewFileMode);
    if (fd < 0)
        return false;
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) &&
        file.open(fd, mode, QFileDevice::AutoCloseHandle))
        return true;
    close(fd);
    return false;
}

void syncToDisk(const QFile &file)
{
    fsync(file.handle());
}

void syncNames(const QString &path)
{
    const QByteArray directory = QFile::encodeName(QFileInfo(path).path());
    const int fd = open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
}

bool moveOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return false;
    syncNames(to);
    return true;
}

bool moveBeside(const QString &from, const QString &to)
{
    if (!QFile::rename(from, to))
        return false;
    syncNames(to);
    if (QFileInfo(from).path() != QFileInfo(to).path())
        syncNames(from);
    return true;
}
