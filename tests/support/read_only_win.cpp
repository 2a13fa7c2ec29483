#include "tests/support/read_only.h"

#include "tests/support/desk.h"

#include <QDirIterator>

#include <vector>

#include <windows.h>

struct ReadOnly::Held {
    std::vector<HANDLE> files;
};

ReadOnly::ReadOnly(const Desk &desk, const QString &directory, Reading reading)
    : m_held(std::make_unique<Held>())
{
    QDirIterator files(desk.path(directory), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const std::wstring path = QDir::toNativeSeparators(files.next()).toStdWString();
        m_held->files.push_back(CreateFileW(path.c_str(), GENERIC_READ,
                                            reading == Allowed ? FILE_SHARE_READ : 0, nullptr, OPEN_EXISTING,
                                            0, nullptr));
    }
}

ReadOnly::~ReadOnly()
{
    for (const HANDLE file : m_held->files)
        CloseHandle(file);
}
