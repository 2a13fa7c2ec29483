#include "tests/support/taken_over_win.h"

#include <QtGlobal>

#include <cstring>

namespace
{
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
} // namespace

bool takeOver(const char *name, ULONG_PTR replacement)
{
    ULONG_PTR *place = importOf(GetModuleHandleW(L"Qt5Core.dll"), name);
    DWORD protection = 0;
    if (place == nullptr || VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection) == 0)
        qFatal("the toolkit's %s cannot be taken over", name);
    *place = replacement;
    VirtualProtect(place, sizeof *place, protection, &protection);
    return true;
}
