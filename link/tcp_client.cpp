// The outgoing TCP link.

#include "link/tcp_loop.h"
#include "link/tcp_protocol.h"
#include "link/tcp_waits.h"
#include "link/tlg_thread.h"

#include "app/journal_words.h"
#include "app/options.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <algorithm>

using namespace TcpProtocol;

namespace
{
/// Whether the peer still holds the connection. Only what it sends before hanging up may stand in between.
bool stillConnected(QTcpSocket &socket)
{
    while (socket.waitForReadyRead(0) && socket.bytesAvailable() < ReadSlice) {
    }
    return socket.state() == QAbstractSocket::ConnectedState;
}
} // namespace

void CTlgThread::TcpIPThread()
{
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    beginLink();
    const auto [address, port] = tcpPeer();
    const QString prefix = JournalWords::TcpRoad + QStringLiteral("%1:%2)").arg(address).arg(port);
    socket.connectToHost(QHostAddress(address), static_cast<quint16>(port));
    if (!waitUntilConnected(socket, ConnectMs, stopRequested)) {
        if (stopRequested)
            return;
        if (reportFailure)
            setState(prefix + QLatin1Char(':') + socket.errorString());
        return backOff();
    }
    connected = true;
    reportFailure = true;
    setState(prefix + JournalWords::LinkUp);
    runClient(socket, prefix);
}

void CTlgThread::runClient(QTcpSocket &socket, const QString &prefix)
{
    CTcpLoop loop(*this, socket, prefix, CTcpLoop::Client);
    sleepSecond();
    if (!stillConnected(socket)) {
        loop.takeRest();
        connected = false;
        setState(prefix + QStringLiteral(": Сброшено соединение / ") + socket.errorString());
        return backOff();
    }
    backoffMinutes = 1;
    loop.agreeKey();
    loop.run();
    sleep(1);
    loop.finish();
    socket.close();
    connected = false;
    if (!stopRequested)
        setState(prefix + QStringLiteral(": Соединение закрыто"));
    reconnectDelay = ClientPause;
}

void CTlgThread::backOff()
{
    reconnectDelay = backoffMinutes * BackoffStep;
    backoffMinutes = std::min(backoffMinutes + 1, BackoffLimit);
    reportFailure = false;
}
