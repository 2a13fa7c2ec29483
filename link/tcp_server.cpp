// The incoming TCP link.

#include "app/journal_words.h"
#include "link/tcp_loop.h"
#include "link/tcp_protocol.h"
#include "link/tcp_waits.h"
#include "link/tlg_thread.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

using namespace TcpProtocol;

namespace
{
/// The peer's address in its plain form: a socket that listens on all addresses shows an IPv4 peer as an
/// IPv6 one.
QHostAddress peerAddress(const QTcpSocket &socket)
{
    QString shown = socket.peerAddress().toString();
    if (shown.startsWith(QLatin1String("::ffff:")))
        shown.remove(0, 7);
    return QHostAddress(shown);
}
} // namespace

void CTlgThread::TcpIPSrvThread()
{
    beginLink();
    const auto [address, port] = tcpPeer();
    const QString prefix = JournalWords::TcpServerRoad + QStringLiteral("port:%1)").arg(port);
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy);
    server.setMaxPendingConnections(2);
    if (!server.listen(QHostAddress::Any, static_cast<quint16>(port)))
        return serverFailed(prefix + QStringLiteral(": не удалось запустить ") + server.errorString());
    setState(prefix + JournalWords::LinkAwaited);
    while (!restartRequested && !stopRequested) {
        bool timedOut = false;
        if (!server.hasPendingConnections() && !server.waitForNewConnection(ListenStepMs, &timedOut) &&
            timedOut)
            continue;
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        if (!socket)
            return serverFailed(prefix + QStringLiteral(": ") + server.errorString());
        if (peerAddress(*socket) == QHostAddress(address))
            return runServer(*socket, prefix);
        setState(prefix + JournalWords::LinkStranger + peerAddress(*socket).toString());
        closeAndWait(*socket);
    }
}

void CTlgThread::runServer(QTcpSocket &socket, const QString &prefix)
{
    CTcpLoop loop(*this, socket, prefix, CTcpLoop::Server);
    connected = true;
    reportFailure = true;
    setState(prefix + JournalWords::LinkComing + QStringLiteral(" с IP ") + peerAddress(socket).toString());
    sleepSecond();
    setState(prefix + JournalWords::LinkUp);
    loop.agreeKey();
    loop.run();
    sleep(1);
    loop.finish();
    closeAndWait(socket);
    connected = false;
    if (!stopRequested)
        setState(prefix + QStringLiteral(": Соединение закрыто"));
    reconnectDelay = ServerPause;
}

void CTlgThread::serverFailed(const QString &text)
{
    if (reportFailure)
        setState(text);
    reconnectDelay = ListenPause;
    reportFailure = false;
}

void CTlgThread::closeAndWait(QTcpSocket &socket) const
{
    socket.close();
    waitUntilDisconnected(socket, DisconnectMs, StoppingMs, stopRequested);
}
