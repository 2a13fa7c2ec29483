// The outgoing link over real sockets. Seconds pass by slotOnSec(); only the waits inside the link are real.

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_loop.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"

#include <QTcpServer>
#include <QtTest>

#include <atomic>

class TestTcpClient : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void refusedConnectionIsShownOnceAndWaitsEverLonger();
    void failureIsShownAgainAfterAConnection();
    void addressMustBeNumeric();
    void connectionLostWithinTheFirstSecondBacksOff();
    void textBeforeAnEarlyLossIsKept();
    void waitStartsAgainAfterTheFirstSecond();
    void peerThatClosesEndsTheLink();
    void restartAndStopEndTheLink();
    void silenceEndsTheLink();
    void silenceIsNotCountedBeforeThePeerSpeaks();
    void writeErrorEndsTheLinkAndKeepsTheText();
    void textGoesBothWays();
    void onceThePeerHasSpokenEachChunkNeedsAWindow();
    void unsentTextGoesOutOnTheNextLink();
    void smallPacketsAreNotDelayed();
    void secondsOfGuaranteedTransferAreCounted();

private:
    [[nodiscard]] QString state(const char *text) const;
    [[nodiscard]] std::unique_ptr<Peer> accept();

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<QTcpServer> m_server;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestTcpClient::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
}

QString TestTcpClient::state(const char *text) const
{
    return qs("TCP (127.0.0.1:%1)").arg(m_server->serverPort()) + qs(text);
}

std::unique_ptr<Peer> TestTcpClient::accept()
{
    if (!comesTrue([&] { return m_server->hasPendingConnections(); }))
        return nullptr;
    QTcpSocket *socket = m_server->nextPendingConnection();
    if (socket)
        socket->setParent(nullptr); // the peer owns it now
    return socket ? std::make_unique<Peer>(socket) : nullptr;
}

void TestTcpClient::refusedConnectionIsShownOnceAndWaitsEverLonger()
{
    m_server->close();
    const quint16 port = freePort();
    Line line;
    line.thread.setTcp(qs("127.0.0.1"), port, false);
    for (const int wait : {60, 120, 180, 240, 300, 360, 420, 480, 540, 600, 600, 600}) {
        line.thread.TcpIPThread();
        QCOMPARE(line.thread.reconnectDelay.load(), wait);
        QVERIFY(!line.thread.connected);
        QVERIFY(!line.thread.reportFailure);
    }
    QCOMPARE(line.states(), QStringList(qs("TCP (127.0.0.1:%1):Connection refused").arg(port)));
}

void TestTcpClient::failureIsShownAgainAfterAConnection()
{
    Line line;
    line.thread.reportFailure = false;
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY(line.thread.connected);
    QVERIFY(line.thread.reportFailure);
}

void TestTcpClient::addressMustBeNumeric()
{
    Line line;
    line.thread.setTcp(qs("localhost"), m_server->serverPort(), false);
    line.thread.TcpIPThread();
    QCOMPARE(line.thread.reconnectDelay.load(), 60);
    QCOMPARE(line.states().size(), 1);
    QVERIFY(line.lastState().startsWith(qs("TCP (localhost:%1):").arg(m_server->serverPort())));
    QVERIFY(!m_server->waitForNewConnection(0));
}

void TestTcpClient::connectionLostWithinTheFirstSecondBacksOff()
{
    Line line;
    for (const int wait : {60, 120}) {
        line.connectOnce(m_server->serverPort());
        accept().reset();
        QTRY_VERIFY(line.ended());
        QCOMPARE(line.thread.reconnectDelay.load(), wait);
        QVERIFY(!line.thread.connected);
        QVERIFY(!line.thread.reportFailure);
    }
    const QString lost = state(": Сброшено соединение / The remote host closed the connection");
    const QString up = state(": Соединено ");
    QCOMPARE(line.states(), QStringList({up, lost, up, lost}));
}

void TestTcpClient::textBeforeAnEarlyLossIsKept()
{
    Line line;
    line.connectOnce(m_server->serverPort());
    auto peer = accept();
    peer->send("\x80\x81");
    peer->socket->disconnectFromHost();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.thread.recvBuffer.mGet(), qs("АБ"));
    QVERIFY(line.lastState().contains(qs("Сброшено соединение")));
    QCOMPARE(line.thread.reconnectDelay.load(), 60);
}

void TestTcpClient::waitStartsAgainAfterTheFirstSecond()
{
    Line line;
    line.thread.backoffMinutes = 7;
    line.connectOnce(m_server->serverPort());
    auto peer = accept();
    peer->send("A");
    QTRY_VERIFY(!line.thread.recvBuffer.mIsEmpty()); // the loop runs
    peer.reset();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.thread.backoffMinutes, 1);
    m_server->close();
    line.thread.restartRequested = false;
    line.thread.TcpIPThread();
    QCOMPARE(line.thread.reconnectDelay.load(), 60);
}

void TestTcpClient::peerThatClosesEndsTheLink()
{
    Line line;
    line.connectOnce(m_server->serverPort());
    auto peer = accept();
    peer->send("A");
    QTRY_VERIFY(!line.thread.recvBuffer.mIsEmpty());
    QVERIFY(line.thread.linkUp());
    peer.reset();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.states(), QStringList({state(": Соединено "), state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 10);
    QVERIFY(!line.thread.connected);
}

void TestTcpClient::restartAndStopEndTheLink()
{
    Line restarted, stopped;
    restarted.connectOnce(m_server->serverPort());
    const auto first = accept();
    stopped.connectOnce(m_server->serverPort());
    const auto second = accept();
    QTRY_VERIFY(restarted.thread.connected && stopped.thread.connected);
    restarted.thread.restartThread();
    stopped.thread.stopThread();
    QTRY_VERIFY(restarted.ended() && stopped.ended());
    QCOMPARE(restarted.states(), QStringList({state(": Соединено "), state(": Соединение закрыто")}));
    QCOMPARE(stopped.states(), QStringList(state(": Соединено ")));
    QTRY_VERIFY(!first->open() && !second->open());
}

void TestTcpClient::silenceEndsTheLink()
{
    Options.TimeOut = 2;
    Line line;
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    peer->send("\x16");
    QTRY_COMPARE(peer->got, QByteArray("\x16"));
    QVERIFY(line.second());
    peer->send("\x16"); // starts the timer anew
    QTRY_COMPARE(peer->got, QByteArray("\x16\x16"));
    QVERIFY(line.second());
    QCOMPARE(line.states(), QStringList(state(": Соединено ")));
    line.thread.slotOnSec();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.states().mid(1), QStringList({state(": Таймаут SYN 2сек"), state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 10);
    QCOMPARE(peer->got, QByteArray("\x16\x16")); // a client polls nobody
}

void TestTcpClient::silenceIsNotCountedBeforeThePeerSpeaks()
{
    Options.TimeOut = 2;
    Line line;
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    for (int i = 0; i < 10; ++i)
        QVERIFY(line.second());
    QVERIFY(peer->open());
    QCOMPARE(line.states(), QStringList(state(": Соединено ")));
}

void TestTcpClient::writeErrorEndsTheLinkAndKeepsTheText()
{
    QString text;
    for (int i = 0; i < 100000; ++i)
        text += QChar('A' + i % 26);
    Line line;
    line.send(text);
    std::atomic<int> downWhenTold{0}; // the news of a failure finds the link down already
    connect(
        &line.thread, &CTlgThread::signalOnState, &line.thread,
        [&] {
            if (line.thread.stateText.mGet().endsWith(qs(": Ошибка отправки данных")) &&
                !line.thread.connected)
                ++downWhenTold;
        },
        Qt::DirectConnection);
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    QTRY_VERIFY(peer->got.size() > 100);
    peer->reset();
    QTRY_VERIFY(line.ended());
    QCOMPARE(downWhenTold.load(), 1);
    QCOMPARE(line.states(), QStringList({state(": Соединено "), state(": Ошибка отправки данных"),
                                         state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 10);
    QVERIFY(!line.thread.connected);
    const QString sent = line.thread.sentLog.mGet();
    QVERIFY(text == sent + line.thread.sendBuffer.mGet());
    QVERIFY(text.startsWith(QString::fromLatin1(peer->got)));
}

void TestTcpClient::textGoesBothWays()
{
    Line line;
    QObject desk; // on this thread, so that the signals arrive queued
    int received = 0, sent = 0;
    connect(&line.thread, &CTlgThread::signalOnReceived, &desk, [&] { ++received; });
    connect(&line.thread, &CTlgThread::signalOnSended, &desk, [&] { ++sent; });
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    line.send(qs("|ЗЦЗЦ 001*"));
    QTRY_COMPARE(peer->got, QByteArray("|\x87\x96\x87\x96 001\x05"));
    QTRY_COMPARE(line.thread.sentLog.mGet(), qs("|ЗЦЗЦ 001*"));
    QTRY_VERIFY(sent >= 1);
    peer->send("\x8D\x8D\x8D\x8D@H");
    QTRY_COMPARE(line.thread.recvBuffer.mGet(), qs("НННН@H"));
    QTRY_VERIFY(received >= 1);
    QVERIFY(line.thread.allSent);
    QTRY_VERIFY(line.thread.sendBuffer.mIsEmpty());
}

void TestTcpClient::onceThePeerHasSpokenEachChunkNeedsAWindow()
{
    Line line;
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    peer->send("A");
    QTRY_VERIFY(!line.thread.recvBuffer.mIsEmpty());
    line.send(qs("0123456789012345"));
    peer->send("\x16");
    QTRY_COMPARE(peer->got, QByteArray("\x16")); // some passes later nothing else has come
    peer->send("\xB5");
    QTRY_COMPARE(peer->got, QByteArray("\x16\xBF"
                                       "0123456789"));
    peer->send("\x16");
    QTRY_COMPARE(peer->got, QByteArray("\x16\xBF"
                                       "0123456789\x16"));
    peer->send("\xB1");
    QTRY_COMPARE(peer->got, QByteArray("\x16\xBF"
                                       "0123456789\x16\xBF"
                                       "01"));
    QTRY_COMPARE(line.thread.shownWindow.load(), 2);
    QTRY_COMPARE(line.thread.sendBuffer.mGet(), qs("2345"));
}

void TestTcpClient::unsentTextGoesOutOnTheNextLink()
{
    Line line;
    line.connectOnce(m_server->serverPort());
    auto peer = accept();
    peer->send("A\xB1");
    QTRY_VERIFY(peer->got.contains('\xBF'));
    line.send(qs("ABCDEF"));
    QTRY_COMPARE(peer->got, QByteArray("\xBF"
                                       "AB"));
    peer.reset();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.thread.sendBuffer.mGet(), qs("CDEF"));
    line.connectOnce(m_server->serverPort());
    peer = accept();
    QTRY_COMPARE(peer->got, QByteArray("CDEF"));
}

void TestTcpClient::smallPacketsAreNotDelayed()
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, m_server->serverPort());
    QVERIFY(socket.waitForConnected());
    Line line;
    const CTcpLoop loop(line.thread, socket, QString(), CTcpLoop::Client);
    QCOMPARE(socket.socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
}

void TestTcpClient::secondsOfGuaranteedTransferAreCounted()
{
    Line line;
    line.connectOnce(m_server->serverPort());
    const auto peer = accept();
    QVERIFY(line.second());
    QCOMPARE(line.thread.protectedSeconds.load(), 0);
    line.thread.startProtectedMode();
    QVERIFY(line.second());
    QVERIFY(line.second());
    QTRY_COMPARE(line.thread.protectedSeconds.load(), 2);
    line.send(qs("AB"));
    QTRY_COMPARE(peer->got, QByteArray("AB"));
    QVERIFY(line.thread.sentLog.mIsEmpty());
}

QTEST_GUILESS_MAIN(TestTcpClient)
#include "test_tcp_client.moc"
