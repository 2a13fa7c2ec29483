#include "link/peer_machine.h"

#include <algorithm>
#include <limits>

#include <winsock2.h>
#include <ws2tcpip.h>

#include <mstcpip.h>
#include <windows.h>

namespace
{
constexpr int DefaultSeconds = 60;
constexpr int LongestWait = 10000; ///< seconds
constexpr int SystemsProbes = 10;  ///< probes that the system sends before it gives up, which cannot be set
constexpr int RetrySecondsOption = 5; ///< TCP_MAXRT, which not every header names

/// A second descriptor of the same connection.
SOCKET secondDescriptor(SOCKET socket)
{
    WSAPROTOCOL_INFOW info = {};
    if (::WSADuplicateSocketW(socket, ::GetCurrentProcessId(), &info) != 0)
        return INVALID_SOCKET;
    return ::WSASocketW(FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO, &info, 0, 0);
}

void setOption(SOCKET socket, int level, int name, int value)
{
    ::setsockopt(socket, level, name, reinterpret_cast<const char *>(&value), sizeof value);
}

/// A machine that is gone is noticed by the probes of an idle connection, and by the end of the retries of
/// one with text on its way.
void noticeWithin(SOCKET socket, int seconds)
{
    seconds = std::min(seconds > 0 ? seconds : DefaultSeconds, LongestWait);
    const auto ms = static_cast<ULONG>(seconds) * 1000;
    tcp_keepalive probes = {1, ms, ms / SystemsProbes};
    DWORD size = 0;
    ::WSAIoctl(socket, SIO_KEEPALIVE_VALS, &probes, sizeof probes, nullptr, 0, &size, nullptr, nullptr);
    setOption(socket, IPPROTO_TCP, RetrySecondsOption, seconds);
}

/// Whether the socket takes bytes at this moment.
bool isWritable(SOCKET socket)
{
    fd_set asked;
    FD_ZERO(&asked);
    FD_SET(socket, &asked);
    timeval now = {0, 0};
    return ::select(0, nullptr, &asked, nullptr, &now) == 1;
}
} // namespace

// The system's buffer is made as small as it can be. It then takes one write whole and holds the next back
// until the machine has acknowledged the first, which is the only sign of it that every version gives.
CPeerMachine::CPeerMachine(qintptr socket, int seconds)
    : m_socket(secondDescriptor(static_cast<SOCKET>(socket)))
{
    setOption(m_socket, SOL_SOCKET, SO_SNDBUF, 1);
    noticeWithin(m_socket, seconds);
}

CPeerMachine::~CPeerMachine()
{
    if (m_socket != INVALID_SOCKET)
        ::closesocket(m_socket);
}

qint64 CPeerMachine::unacknowledged() const
{
    if (m_socket == INVALID_SOCKET || isWritable(m_socket))
        return 0;
    return std::numeric_limits<int>::max(); // some, and no telling how many
}

bool CPeerMachine::hasRoom() const
{
    return true; // not told; what a full machine is sent counts as not acknowledged
}

void CPeerMachine::beginWaiting() {}

bool CPeerMachine::answers()
{
    return true; // the system itself ends the connection of a machine that does not
}

void CPeerMachine::giveUp()
{
    const linger none = {1, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&none), sizeof none);
}
