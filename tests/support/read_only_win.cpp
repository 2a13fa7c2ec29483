#include "tests/support/read_only.h"

#include "tests/support/desk.h"

#include <QDirIterator>

#include <vector>

#include <windows.h>

struct ReadOnly::Held {
    std::vector<HANDLE> files;
};

namespace
{
DWORD sharing(ReadOnly::Reading reading)
{
    switch (reading) {
    case ReadOnly::Writable: return FILE_SHARE_READ | FILE_SHARE_WRITE;
    case ReadOnly::Allowed: return FILE_SHARE_READ;
    case ReadOnly::Refused: return 0;
    }
    return 0;
}
} // namespace

ReadOnly::ReadOnly(const Desk &desk, const QString &directory, Reading reading)
    : m_held(std::make_unique<Held>())
{
    QDirIterator all(desk.path(directory), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const std::wstring path = QDir::toNativeSeparators(all.next()).toStdWString();
        m_held->files.push_back(
            CreateFileW(path.c_str(), GENERIC_READ, sharing(reading), nullptr, OPEN_EXISTING, 0, nullptr));
    }
}

ReadOnly::~ReadOnly()
{
    for (const HANDLE file : m_held->files)
        CloseHandle(file);
}
