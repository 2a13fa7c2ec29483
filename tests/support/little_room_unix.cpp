#include "tests/support/little_room.h"

#include <QTcpServer>

#include <sys/socket.h>

void giveLittleRoom(const QTcpServer &server)
{
    const int bytes = 2048;
    ::setsockopt(static_cast<int>(server.socketDescriptor()), SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
}
