#pragma once

#include "link/tcp_delivery.h"
#include "link/tcp_stream.h"

class QTcpSocket;

/// One connection of a TCP link, from the key agreement to the loss, in either role. The link thread owns it
/// and the socket.
class CTcpLoop
{
public:
    enum Role { Client, Server };

    /// \a prefix begins each state text. The socket is connected.
    CTcpLoop(CTlgThread &thread, QTcpSocket &socket, const QString &prefix, Role role);

    /// Exchanges seeds with the peer if a key is set. Neither end leads: each sends its byte at once. Without
    /// an answer in time the link stays plain.
    void agreeKey();
    /// Hands on what a peer sent that hung up before the loop began. With a key set it could not be read.
    void takeRest();
    /// Moves text both ways until the link is lost or to be left, then reports what is not yet reported.
    void run();
    /// One pass of run(); false if it found a reason to leave.
    [[nodiscard]] bool pass();
    /// Settles, before the socket closes, what is still on its way.
    void finish() { m_delivery.finish(); }

    CTcpStream stream;

private:
    [[nodiscard]] QByteArray agreedKey() const; ///< empty if the link stays plain
    [[nodiscard]] bool running() const;
    [[nodiscard]] bool secondPassed();
    [[nodiscard]] bool heldBack() const;
    void receive();
    [[nodiscard]] bool send();
    bool write(const QByteArray &bytes);
    [[nodiscard]] bool sendingFailed(); ///< always false

    CTlgThread &m_thread;
    QTcpSocket &m_socket;
    CTcpDelivery m_delivery;
    QString m_prefix;
    Role m_role;
};
