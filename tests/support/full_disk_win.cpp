// The system knows no limit for the files of a process: the toolkit's writes are taken over where its library
// names the system's function.

#include "tests/support/full_disk.h"

#include <algorithm>
#include <cstring>

#include <windows.h>

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

/// The place in \a module, once loaded, from which it takes the address of the system's function \a name.
ULONG_PTR *importOf(HMODULE module, const char *name)
{
    auto *base = reinterpret_cast<BYTE *>(module);
    const auto *dos = reinterpret_cast<IMAGE_DOS_HEADER *>(base);
    const auto *head = reinterpret_cast<IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
    const DWORD table = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto *from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(base + table); from->Name != 0; ++from) {
        auto *names = reinterpret_cast<IMAGE_THUNK_DATA *>(base + from->OriginalFirstThunk);
        auto *places = reinterpret_cast<IMAGE_THUNK_DATA *>(base + from->FirstThunk);
        for (int i = 0; names[i].u1.AddressOfData != 0; ++i) {
            if (IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal))
                continue;
            const auto *entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME *>(base + names[i].u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char *>(entry->Name), name) == 0)
                return reinterpret_cast<ULONG_PTR *>(&places[i].u1.Function);
        }
    }
    return nullptr;
}

void takeOverWriting()
{
    ULONG_PTR *place = importOf(GetModuleHandleW(L"Qt5Core.dll"), "WriteFile");
    DWORD protection = 0;
    if (place == nullptr || VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection) == 0)
        qFatal("the toolkit's writes cannot be taken over");
    *place = reinterpret_cast<ULONG_PTR>(writeWithin);
    VirtualProtect(place, sizeof *place, protection, &protection);
}
} // namespace

FullDisk::FullDisk(qint64 room) : m_former(std::make_unique<Former>(Former{roomLeft}))
{
    static const bool takenOver = (takeOverWriting(), true);
    Q_UNUSED(takenOver)
    roomLeft = room;
}

FullDisk::~FullDisk()
{
    roomLeft = m_former->room;
}
