#include "link/tcp_waits.h"
#include "tests/link/black_hole.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <thread>

/// Waits for a socket, and the stop that cuts them short. What a stop cuts would go on for minutes.
class TestTcpWaits : public QObject
{
    Q_OBJECT

private slots:
    void connectionIsMade();
    void refusalEndsTheWait();
    void addressThatIsNoneEndsTheWait();
    void waitThatRunsOutLeavesQtsError();
    void stopEndsTheConnecting();
    void stopBeforeTheWaitCounts();
    void closedSocketNeedsNoWait();
    void unreadBytesAreWaitedForUntilTheStop();
    void unreadBytesAreWaitedForUntilTheTimeIsOver();
};

namespace
{
constexpr int Minutes = 600000;

/// Sets \a stop while the test waits.
class LaterStop
{
public:
    explicit LaterStop(Relaxed<bool> &stop)
        : m_thread([&stop] {
              QThread::msleep(300);
              stop = true;
          })
    {
    }
    ~LaterStop() { m_thread.join(); }

private:
    std::thread m_thread;
};

/// A connection whose far end reads nothing, filled until bytes stay on this side.
class FullConnection
{
public:
    FullConnection()
    {
        if (!m_server.listen(QHostAddress::LocalHost))
            return;
        socket.connectToHost(QHostAddress::LocalHost, m_server.serverPort());
        if (!socket.waitForConnected(30000) || !m_server.waitForNewConnection(30000))
            return;
        const QByteArray much(1 << 20, 'A');
        for (int i = 0; i < 64; ++i)
            socket.write(much);
        while (socket.waitForBytesWritten(500)) {
        }
        socket.close();
    }

    QTcpSocket socket;

private:
    QTcpServer m_server;
};
} // namespace

void TestTcpWaits::connectionIsMade()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.serverPort());
    QVERIFY(waitUntilConnected(socket, Minutes, false));
    QCOMPARE(socket.state(), QAbstractSocket::ConnectedState);
}

void TestTcpWaits::refusalEndsTheWait()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const quint16 port = server.serverPort();
    server.close();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    QVERIFY(!waitUntilConnected(socket, Minutes, false));
    QCOMPARE(socket.error(), QAbstractSocket::ConnectionRefusedError);
    QCOMPARE(socket.errorString(), QStringLiteral("Connection refused"));
}

void TestTcpWaits::addressThatIsNoneEndsTheWait()
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(), 1);
    QVERIFY(!waitUntilConnected(socket, Minutes, false));
    QCOMPARE(socket.error(), QAbstractSocket::HostNotFoundError);
}

void TestTcpWaits::waitThatRunsOutLeavesQtsError()
{
    const BlackHole hole;
    QVERIFY(hole.port != 0);
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, hole.port);
    QVERIFY(!waitUntilConnected(socket, 300, false));
    QCOMPARE(socket.error(), QAbstractSocket::SocketTimeoutError);
    QCOMPARE(socket.errorString(), QStringLiteral("Socket operation timed out"));
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
}

void TestTcpWaits::stopEndsTheConnecting()
{
    const BlackHole hole;
    QVERIFY(hole.port != 0);
    QTcpSocket socket;
    Relaxed<bool> stop = false;
    socket.connectToHost(QHostAddress::LocalHost, hole.port);
    const LaterStop later(stop);
    QVERIFY(!waitUntilConnected(socket, Minutes, stop));
    QVERIFY(stop);
}

void TestTcpWaits::stopBeforeTheWaitCounts()
{
    const BlackHole hole;
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, hole.port);
    QVERIFY(!waitUntilConnected(socket, Minutes, true));
}

void TestTcpWaits::closedSocketNeedsNoWait()
{
    QTcpSocket socket;
    waitUntilDisconnected(socket, Minutes, Minutes, false);
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
}

void TestTcpWaits::unreadBytesAreWaitedForUntilTheStop()
{
    FullConnection full;
    QCOMPARE(full.socket.state(), QAbstractSocket::ClosingState);
    Relaxed<bool> stop = false;
    const LaterStop later(stop);
    waitUntilDisconnected(full.socket, Minutes, 300, stop);
    QVERIFY(stop);
}

void TestTcpWaits::unreadBytesAreWaitedForUntilTheTimeIsOver()
{
    FullConnection full;
    QCOMPARE(full.socket.state(), QAbstractSocket::ClosingState);
    waitUntilDisconnected(full.socket, 300, 300, false);
    QCOMPARE(full.socket.state(), QAbstractSocket::ClosingState); // given up
}

QTEST_GUILESS_MAIN(TestTcpWaits)
#include "test_tcp_waits.moc"
