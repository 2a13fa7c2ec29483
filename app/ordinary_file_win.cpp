#include "app/ordinary_file.h"

#include <QDir>

#include <io.h>
#include <windows.h>

namespace
{
std::wstring systemName(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// True unless a device or a pipe stands under the name. Asked without access, which disturbs none.
bool mayBeOrdinary(const QString &path)
{
    const HANDLE handle =
        CreateFileW(systemName(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return true;
    const DWORD type = GetFileType(handle);
    CloseHandle(handle);
    return type == FILE_TYPE_DISK;
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

bool moveOver(const QString &from, const QString &to)
{
    return MoveFileExW(systemName(from).c_str(), systemName(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}
