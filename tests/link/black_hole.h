#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtGlobal>

/// An address of this machine where a connection is neither made nor refused: whoever calls it waits. It
/// listens with no room for callers, and holds the callers that take what room there is.
class BlackHole
{
public:
    BlackHole()
    {
        sockaddr_in place = {};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        m_listening = socket(AF_INET, SOCK_STREAM, 0);
        auto *address = reinterpret_cast<sockaddr *>(&place);
        if (bind(m_listening, address, size) != 0 || listen(m_listening, 0) != 0 ||
            getsockname(m_listening, address, &size) != 0)
            return;
        port = ntohs(place.sin_port);
        for (int &caller : m_callers) {
            caller = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            (void)connect(caller, address, size);
        }
    }
    ~BlackHole()
    {
        for (const int caller : m_callers)
            close(caller);
        close(m_listening);
    }
    BlackHole(const BlackHole &) = delete;
    BlackHole &operator=(const BlackHole &) = delete;

    quint16 port = 0; ///< 0 if it could not be made

private:
    int m_listening = -1;
    int m_callers[4] = {-1, -1, -1, -1};
};
