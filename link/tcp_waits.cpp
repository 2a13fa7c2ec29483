#include "link/tcp_waits.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>

namespace
{
constexpr int StepMs = 100;

bool isConnecting(const QTcpSocket &socket)
{
    return socket.state() == QAbstractSocket::HostLookupState ||
           socket.state() == QAbstractSocket::ConnectingState;
}
} // namespace

// A waitForConnected() that runs out gives the attempt up, so the steps are those of an event loop.
bool waitUntilConnected(QTcpSocket &socket, int milliseconds, const Relaxed<bool> &stop)
{
    QEventLoop step;
    QTimer look;
    QObject::connect(&socket, &QTcpSocket::stateChanged, &step, &QEventLoop::quit);
    QObject::connect(&look, &QTimer::timeout, &step, &QEventLoop::quit);
    look.start(std::min(StepMs, milliseconds));
    const QDeadlineTimer deadline(milliseconds);
    while (isConnecting(socket) && !stop && !deadline.hasExpired())
        step.exec();
    if (isConnecting(socket) && !stop)
        return socket.waitForConnected(1); // sets the error
    return socket.state() == QAbstractSocket::ConnectedState;
}

void waitUntilDisconnected(QTcpSocket &socket, int milliseconds, int stoppingMilliseconds,
                           const Relaxed<bool> &stop)
{
    QDeadlineTimer deadline(milliseconds);
    while (socket.state() != QAbstractSocket::UnconnectedState && !deadline.hasExpired()) {
        if (stop && deadline.remainingTime() > stoppingMilliseconds)
            deadline.setRemainingTime(stoppingMilliseconds);
        const qint64 left = deadline.remainingTime();
        if (!socket.waitForDisconnected(int(std::min<qint64>(StepMs, left))) &&
            socket.error() != QAbstractSocket::SocketTimeoutError)
            return;
    }
}
