#pragma once

#include <csignal>
#include <sys/resource.h>

/// While it lives, every write of this process to a file on disk fails, as on a full disk. Files can be
/// made and renamed; a pipe or a socket is not concerned.
class FullDisk
{
public:
    FullDisk() : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit none = m_former;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_former = {};
    void (*m_formerHandler)(int);
};
