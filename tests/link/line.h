#pragma once

#include "link/tlg_thread.h"
#include "tests/support/free_port.h"
#include "tests/support/thread_end.h"

#include <QMutex>
#include <QStringList>
#include <QTcpSocket>
#include <QThread>

#include <memory>

/// A link under test: a CTlgThread of its own, with every state text that it showed, in order.
class Line
{
public:
    using LinkFunction = void (CTlgThread::*)();

    Line();
    ~Line();
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    /// Runs one connection of the link on a thread beside, as the link thread's loop would.
    void once(LinkFunction function);
    void connectOnce(quint16 port);                                    ///< as client to 127.0.0.1
    void listenOnce(quint16 port, const char *admitted = "127.0.0.1"); ///< as server
    /// Whether that connection, if one was run so, has ended; its results may then be read.
    [[nodiscard]] bool ended() const { return m_runnerEnd && m_runnerEnd->ended(); }
    /// One second passes for the link; true when the link has taken note of it.
    [[nodiscard]] bool second();
    [[nodiscard]] QStringList states() const;
    [[nodiscard]] QString lastState() const { return states().isEmpty() ? QString() : states().last(); }
    void send(const QString &text) { thread.sendBuffer.mAppend(text); }

    CTlgThread thread;

private:
    mutable QMutex m_mutex;
    QStringList m_states;
    ThreadEnd m_threadEnd{thread};
    std::unique_ptr<QThread> m_runner;
    std::unique_ptr<ThreadEnd> m_runnerEnd;
};

/// The peer's socket, which gathers what it gets. Lives on the test's thread.
class Peer
{
public:
    explicit Peer(QTcpSocket *socket);
    /// Connects to the link's server, from the address \a from.
    explicit Peer(quint16 port, const char *from = "127.0.0.1");

    void send(const QByteArray &bytes); ///< once the connection stands
    [[nodiscard]] bool open() const { return socket->state() == QAbstractSocket::ConnectedState; }
    /// Hangs up with a reset, as a peer that dies.
    void reset() { socket->abort(); }

    std::unique_ptr<QTcpSocket> socket;
    QByteArray got;

private:
    void gather();
};
