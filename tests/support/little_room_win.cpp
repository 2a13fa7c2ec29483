#include "tests/support/little_room.h"

#include <QTcpServer>

#include <winsock2.h>

void giveLittleRoom(const QTcpServer &server)
{
    const int bytes = 2048;
    ::setsockopt(static_cast<SOCKET>(server.socketDescriptor()), SOL_SOCKET, SO_RCVBUF,
                 reinterpret_cast<const char *>(&bytes), sizeof bytes);
}
