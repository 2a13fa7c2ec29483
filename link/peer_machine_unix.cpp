#include "link/peer_machine.h"

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <linux/sockios.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr int DefaultSeconds = 60;
constexpr int LongestWait = 10000; ///< seconds, below what the system takes
constexpr int MostProbes = 3;

void setOption(int socket, int level, int name, int value)
{
    ::setsockopt(socket, level, name, &value, sizeof value);
}

/// Probes begin after \a seconds of idleness, and as many go unanswered as fit into the same time again.
void askWhenIdle(int socket, int seconds)
{
    seconds = std::min(seconds > 0 ? seconds : DefaultSeconds, LongestWait);
    const int interval = std::max(1, seconds / (MostProbes + 1));
    setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, seconds);
    setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, interval);
    setOption(socket, IPPROTO_TCP, TCP_KEEPCNT, std::min(MostProbes, seconds / interval));
    setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
}

/// All zero, with an open window, if the system tells nothing.
tcp_info infoOf(int socket)
{
    tcp_info info = {};
    info.tcpi_snd_wnd = 1; // a system that does not know this field leaves it
    socklen_t size = sizeof info;
    ::getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size);
    return info;
}
} // namespace

CPeerMachine::CPeerMachine(qintptr socket, int seconds)
    : m_socket(static_cast<quintptr>(::fcntl(static_cast<int>(socket), F_DUPFD_CLOEXEC, 0)))
{
    askWhenIdle(static_cast<int>(m_socket), seconds);
}

CPeerMachine::~CPeerMachine()
{
    ::close(static_cast<int>(m_socket));
}

qint64 CPeerMachine::unacknowledged() const
{
    int bytes = 0;
    return ::ioctl(static_cast<int>(m_socket), SIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

bool CPeerMachine::hasRoom() const
{
    return infoOf(static_cast<int>(m_socket)).tcpi_snd_wnd > 0;
}

void CPeerMachine::beginWaiting()
{
    m_before = m_heard = infoOf(static_cast<int>(m_socket)).tcpi_segs_in;
}

bool CPeerMachine::answers()
{
    const tcp_info info = infoOf(static_cast<int>(m_socket));
    const bool lastTryAnswered = info.tcpi_last_ack_recv <= info.tcpi_last_data_sent; // ages
    return std::exchange(m_heard, info.tcpi_segs_in) != info.tcpi_segs_in ||
           (info.tcpi_segs_in != m_before && lastTryAnswered);
}

void CPeerMachine::giveUp()
{
    const linger none = {1, 0};
    ::setsockopt(static_cast<int>(m_socket), SOL_SOCKET, SO_LINGER, &none, sizeof none);
}
