#include "app/ordinary_reader.h"

#include "app/system_path_win.h"

#include <QFileInfo>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace
{
/// Others may go on with the file, rename and remove it too: a telegram is filed while a search reads it.
int openShared(const std::wstring &path)
{
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return -1;
    const int handle = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDONLY | _O_BINARY);
    if (handle < 0)
        CloseHandle(file);
    return handle;
}
} // namespace

bool COrdinaryReader::open(const QFileInfo &listed)
{
    close();
    if (!listed.isFile())
        return false;
    m_handle = openShared(systemPath(listed.filePath()));
    struct _stat64 status = {};
    if (m_handle >= 0 && (_fstat64(m_handle, &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG))
        close();
    m_left = status.st_size;
    return isOpen();
}

int COrdinaryReader::read(char *to, int size)
{
    int done = 0;
    while (isOpen() && done < size) {
        const int count = _read(m_handle, to + done, unsigned(size - done));
        if (count <= 0)
            break;
        done += count;
        m_left -= count;
        if (m_left == 0) // most files have no more; asking would cost as much as the reading
            break;
    }
    return done;
}

void COrdinaryReader::close()
{
    if (isOpen())
        _close(m_handle);
    m_handle = -1;
}
