#include "tests/support/file_id.h"

#include <QDir>

#include <windows.h>

quint64 fileId(const QString &path)
{
    const HANDLE file = CreateFileW(QDir::toNativeSeparators(path).toStdWString().c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION info = {};
    if (file == INVALID_HANDLE_VALUE)
        return 0;
    GetFileInformationByHandle(file, &info);
    CloseHandle(file);
    return (quint64(info.nFileIndexHigh) << 32) | info.nFileIndexLow;
}
