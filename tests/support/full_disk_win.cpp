// The system knows no limit for the files of a process: the toolkit's writes are taken over.

#include "tests/support/full_disk.h"

#include "tests/support/taken_over_win.h"

#include <algorithm>

struct FullDisk::Former {
    qint64 room;
};

namespace
{
constexpr qint64 Endless = -1;
qint64 roomLeft = Endless;

BOOL WINAPI writeWithin(HANDLE file, LPCVOID data, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
{
    LARGE_INTEGER at = {};
    if (roomLeft != Endless && GetFileType(file) == FILE_TYPE_DISK &&
        SetFilePointerEx(file, {}, &at, FILE_CURRENT) != 0) {
        size = DWORD(std::clamp<qint64>(roomLeft - at.QuadPart, 0, size));
        if (size == 0) {
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
        }
    }
    return WriteFile(file, data, size, written, overlapped);
}
} // namespace

FullDisk::FullDisk(qint64 room) : m_former(std::make_unique<Former>(Former{roomLeft}))
{
    static const bool takenOver = takeOver("WriteFile", writeWithin);
    Q_UNUSED(takenOver)
    roomLeft = room;
}

FullDisk::~FullDisk()
{
    roomLeft = m_former->room;
}
