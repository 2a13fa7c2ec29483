#include "app/ordinary_file.h"

#include "app/system_path_win.h"

#include <QThread>

#include <io.h>
#include <windows.h>

namespace
{
constexpr int Tries = 10; // a quarter of a second in all
constexpr unsigned long MsBetweenTries = 25;

/// True unless a device or a pipe stands under the name. Asked without access, which disturbs none.
bool mayBeOrdinary(const QString &path)
{
    const HANDLE handle =
        CreateFileW(systemPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return true;
    const DWORD type = GetFileType(handle);
    CloseHandle(handle);
    return type == FILE_TYPE_DISK;
}

/// Whether the last call has failed for another program that has the file open, or has just deleted it.
bool isHeld()
{
    const DWORD error = GetLastError();
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED;
}

bool move(const QString &from, const QString &to, DWORD flags)
{
    const std::wstring source = systemPath(from);
    const std::wstring target = systemPath(to);
    for (int tried = 1;; ++tried) {
        if (MoveFileExW(source.c_str(), target.c_str(), flags) != 0)
            return true;
        if (tried == Tries || !isHeld())
            return false;
        QThread::msleep(MsBetweenTries);
    }
}
} // namespace

bool openOrdinary(QFile &file, QIODevice::OpenMode mode)
{
    if (!mode.testFlag(QIODevice::Append))
        mode |= QIODevice::ExistingOnly;
    return mayBeOrdinary(file.fileName()) && file.open(mode);
}

void syncToDisk(const QFile &file)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
    FlushFileBuffers(handle);
}

// The file system writes names by itself, and in order; a move is written through.
void syncNames(const QString &) {}

bool moveOver(const QString &from, const QString &to)
{
    return move(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

// What the plain call cannot do, such as a move to another drive, QFile may.
bool moveBeside(const QString &from, const QString &to)
{
    return move(from, to, MOVEFILE_WRITE_THROUGH) || QFile::rename(from, to);
}
