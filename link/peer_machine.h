#pragma once

#include <QtGlobal>

/// What the operating system knows of the machine at the other end of a TCP connection. It holds the
/// connection by a descriptor of its own, because a loss may come together with the last acknowledgement. The
/// link thread owns it.
class CPeerMachine
{
public:
    /// \a socket is the descriptor of a connection that stands. On an idle connection the system asks the
    /// machine for a sign of life, and ends the connection of one that is gone within twice \a seconds; 0 is
    /// as 60.
    CPeerMachine(qintptr socket, int seconds);
    ~CPeerMachine();
    CPeerMachine(const CPeerMachine &) = delete;
    CPeerMachine &operator=(const CPeerMachine &) = delete;

    /// Bytes given to the system that the machine has not acknowledged.
    [[nodiscard]] qint64 unacknowledged() const;
    /// It takes more: false while a program there does not read what has come.
    [[nodiscard]] bool hasRoom() const;
    /// Something is sent that it has to acknowledge.
    void beginWaiting();
    /// To be asked once a second while it has to acknowledge something: whether it has given a sign of life
    /// since, or at least answered the last try, as a machine without room does. The tries grow rare.
    [[nodiscard]] bool answers();
    /// What is not acknowledged is not tried any more when the connection is closed.
    void giveUp();

private:
    quintptr m_socket;    ///< all bits set if there is none
    quint32 m_before = 0; ///< segments that had come when the waiting began
    quint32 m_heard = 0;  ///< the same at the last question
};
