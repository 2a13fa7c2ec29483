#include "app/ordinary_reader.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool COrdinaryReader::open(const QFileInfo &listed)
{
    close();
    // The look before spares a device the opening; of what is no link the listing knows it. The one after is
    // the one to trust.
    if (!listed.isFile())
        return false;
    m_handle = ::open(QFile::encodeName(listed.filePath()).constData(),
                      O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status = {};
    if (m_handle >= 0 && (fstat(m_handle, &status) != 0 || !S_ISREG(status.st_mode)))
        close();
    m_left = status.st_size;
    return isOpen();
}

int COrdinaryReader::read(char *to, int size)
{
    int done = 0;
    while (isOpen() && done < size) {
        const ssize_t count = ::read(m_handle, to + done, std::size_t(size - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += int(count);
        m_left -= count;
        if (m_left == 0) // most files have no more; asking would cost as much as the reading
            break;
    }
    return done;
}

void COrdinaryReader::close()
{
    if (isOpen())
        ::close(m_handle);
    m_handle = -1;
}
