#include "app/ordinary_reader.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

bool COrdinaryReader::open(const QFileInfo &listed)
{
    close();
    if (!listed.isFile())
        return false;
    const std::wstring path = QDir::toNativeSeparators(listed.filePath()).toStdWString();
    m_handle = _wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
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
