// The files are held open; that a directory takes nothing new is the toolkit's to see, whose opening and
// making is taken over.

#include "tests/support/read_only.h"

#include "tests/support/desk.h"
#include "tests/support/taken_over_win.h"

#include <QDirIterator>
#include <QMutex>

#include <vector>

struct ReadOnly::Held {
    QString directory;
    std::vector<HANDLE> files;
};

namespace
{
QMutex mutex; // of closedDirectories; files are opened in threads
QStringList closedDirectories;

DWORD sharing(ReadOnly::Reading reading)
{
    switch (reading) {
    case ReadOnly::Writable: return FILE_SHARE_READ | FILE_SHARE_WRITE;
    case ReadOnly::Allowed: return FILE_SHARE_READ;
    case ReadOnly::Refused: return 0;
    }
    return 0;
}

/// Whether nothing stands yet under a name of a closed directory.
bool isNewThere(LPCWSTR name)
{
    mutex.lock();
    const QStringList directories = closedDirectories;
    mutex.unlock();
    const QFileInfo file(QString::fromWCharArray(name).remove(QStringLiteral("\\\\?\\")));
    return directories.contains(file.absolutePath(), Qt::CaseInsensitive) && !file.exists();
}

HANDLE WINAPI openUnlessNew(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                            DWORD disposition, DWORD flags, HANDLE model)
{
    if (disposition != OPEN_EXISTING && disposition != TRUNCATE_EXISTING && isNewThere(name)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return CreateFileW(name, access, share, security, disposition, flags, model);
}

BOOL WINAPI makeUnlessNew(LPCWSTR name, LPSECURITY_ATTRIBUTES security)
{
    if (!isNewThere(name))
        return CreateDirectoryW(name, security);
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}
} // namespace

ReadOnly::ReadOnly(const Desk &desk, const QString &directory, Reading reading)
    : m_held(std::make_unique<Held>(Held{QDir(desk.path(directory)).absolutePath(), {}}))
{
    static const bool takenOver =
        takeOver("CreateFileW", openUnlessNew) && takeOver("CreateDirectoryW", makeUnlessNew);
    Q_UNUSED(takenOver)
    QDirIterator all(m_held->directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const std::wstring path = QDir::toNativeSeparators(all.next()).toStdWString();
        m_held->files.push_back(
            CreateFileW(path.c_str(), GENERIC_READ, sharing(reading), nullptr, OPEN_EXISTING, 0, nullptr));
    }
    const QMutexLocker lock(&mutex);
    closedDirectories << m_held->directory;
}

ReadOnly::~ReadOnly()
{
    for (const HANDLE file : m_held->files)
        CloseHandle(file);
    const QMutexLocker lock(&mutex);
    closedDirectories.removeOne(m_held->directory);
}
