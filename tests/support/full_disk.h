#pragma once

#include <csignal>
#include <sys/resource.h>

/// While it lives, every write of this process that would take a file on disk past \a room bytes fails, as
/// on a full disk. Files can be made and renamed; a pipe or a socket is not concerned.
class FullDisk
{
public:
    explicit FullDisk(rlim_t room = 0) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit limit = m_former;
        limit.rlim_cur = room;
        setrlimit(RLIMIT_FSIZE, &limit);
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
