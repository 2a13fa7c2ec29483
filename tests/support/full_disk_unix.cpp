#include "tests/support/full_disk.h"

#include <csignal>
#include <sys/resource.h>

struct FullDisk::Former {
    rlimit limit = {};
    void (*handler)(int) = nullptr;
};

FullDisk::FullDisk(qint64 room) : m_former(std::make_unique<Former>())
{
    m_former->handler = std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
    getrlimit(RLIMIT_FSIZE, &m_former->limit);
    rlimit limit = m_former->limit;
    limit.rlim_cur = rlim_t(room);
    setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk()
{
    setrlimit(RLIMIT_FSIZE, &m_former->limit);
    std::signal(SIGXFSZ, m_former->handler);
}
