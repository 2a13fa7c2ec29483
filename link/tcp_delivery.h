#pragma once

#include "link/peer_machine.h"

#include <QString>

#include <memory>

class CTlgThread;
class QTcpSocket;

/// Follows what a TCP link writes until the peer's machine has acknowledged it. The chunk that is on its way
/// stays held at the head of the send buffer till then: the buffer is empty only when the peer has it all,
/// and what a lost link leaves behind goes out on the next one. Lives for one connection; the link thread
/// owns it.
class CTcpDelivery
{
public:
    /// \a socket is connected.
    CTcpDelivery(CTlgThread &thread, QTcpSocket &socket);

    /// Notes bytes given to the socket.
    void wrote(int bytes);
    /// Notes that the held chunk is now among the bytes written.
    void sent(const QString &chunk);
    /// Reports the chunk as gone and takes it off the send buffer once it is acknowledged.
    void update();
    /// A chunk has been written and is not acknowledged.
    [[nodiscard]] bool onItsWay() const { return !m_chunk.isEmpty(); }
    /// The next chunk may be written: none is on its way, and hardly anything else.
    [[nodiscard]] bool ready();
    /// False if the peer's machine has left the chunk on its way without any answer for the silence time-out.
    [[nodiscard]] bool secondPassed();
    /// Ends the work before the socket closes. A chunk that is still on its way is given up, and stays.
    void finish();

private:
    [[nodiscard]] qint64 waiting();

    CTlgThread &m_thread;
    QTcpSocket &m_socket;
    std::unique_ptr<CPeerMachine> m_machine;
    QString m_chunk;
    qint64 m_after = 0;    ///< bytes written behind the chunk
    qint64 m_unpassed = 0; ///< bytes that the program's socket had not passed on when last seen open
    int m_silentSeconds = 0;
};
