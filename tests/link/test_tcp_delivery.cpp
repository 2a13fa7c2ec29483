// When a TCP link counts a chunk as sent, over loopback: towards peers that do not read and to peers that
// hang up with the last word.

#include "app/options.h"
#include "link/tcp_loop.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/little_room.h"

#include <QTcpServer>
#include <QtTest>

class TestTcpDelivery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void chunkStaysInTheBufferUntilItArrives();
    void peerThatHangsUpWithTheLastWordHasIt();
    void peerThatDoesNotReadKeepsTheLink();
    void windowOfAPeerThatDoesNotReadIsKept();

private:
    [[nodiscard]] std::unique_ptr<Peer> join(Line &line);

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<QTcpServer> m_server;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

QString letters(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar('A' + i % 26);
    return text;
}

/// The program there leaves what comes to its machine.
void stopReading(Peer &peer)
{
    peer.socket->setReadBufferSize(1);
    peer.socket->disconnect();
}

/// Both ends on this thread, the link's passes taken one by one.
struct StepByStep {
    explicit StepByStep(QTcpServer &server)
    {
        near.connectToHost(QHostAddress::LocalHost, server.serverPort());
        (void)near.waitForConnected(5000);
        (void)server.waitForNewConnection(5000);
        far.reset(server.nextPendingConnection());
        loop = std::make_unique<CTcpLoop>(thread, near, QString(), CTcpLoop::Client);
    }

    CTlgThread thread;
    QTcpSocket near;
    std::unique_ptr<QTcpSocket> far;
    std::unique_ptr<CTcpLoop> loop;
};
} // namespace

void TestTcpDelivery::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
}

std::unique_ptr<Peer> TestTcpDelivery::join(Line &line)
{
    line.connectOnce(m_server->serverPort());
    if (!QTest::qWaitFor([&] { return m_server->hasPendingConnections(); }, 20000))
        return nullptr;
    QTcpSocket *socket = m_server->nextPendingConnection();
    socket->setParent(nullptr); // the peer owns it now
    return std::make_unique<Peer>(socket);
}

void TestTcpDelivery::chunkStaysInTheBufferUntilItArrives()
{
    StepByStep ends(*m_server);
    QVERIFY(ends.far);
    ends.thread.sendBuffer.mAppend(qs("AB@H"));
    QString sent;
    QString arrived;
    while (!ends.thread.sendBuffer.mIsEmpty()) {
        QVERIFY(ends.loop->pass());
        (void)ends.far->waitForReadyRead(0);
        arrived += QString::fromLatin1(ends.far->readAll());
        sent = ends.thread.sentLog.mGet();
        QVERIFY(arrived.startsWith(sent));
        QCOMPARE(sent + ends.thread.sendBuffer.mGet(), qs("AB@H"));
    }
    QCOMPARE(sent, qs("AB@H"));
    QVERIFY(ends.thread.sentEvents >= 2);
}

// The acknowledgement and the end of the connection come at once: the text has arrived all the same.
void TestTcpDelivery::peerThatHangsUpWithTheLastWordHasIt()
{
    for (int i = 0; i < 20; ++i) {
        StepByStep ends(*m_server);
        QVERIFY(ends.far);
        ends.thread.sendBuffer.mAppend(qs("ПОСЛЕДНЕЕ"));
        QVERIFY(ends.loop->pass());
        QVERIFY(ends.far->waitForReadyRead(5000));
        QCOMPARE(ends.far->readAll().size(), 9);
        ends.far.reset();
        QTRY_VERIFY(!ends.loop->pass() || ends.near.state() != QAbstractSocket::ConnectedState);
        ends.loop->finish();
        QCOMPARE(ends.thread.sentLog.mGet(), qs("ПОСЛЕДНЕЕ"));
        QVERIFY(ends.thread.sendBuffer.mIsEmpty());
        QVERIFY(ends.thread.stateText.mGet().isEmpty());
    }
}

// Its machine answers for it. The seconds here are real ones too, as the system's own waits are.
void TestTcpDelivery::peerThatDoesNotReadKeepsTheLink()
{
    Options.TimeOut = 1;
    const QString text = letters(10000);
    Line line;
    giveLittleRoom(*m_server);
    const auto peer = join(line);
    QVERIFY(peer);
    stopReading(*peer);
    line.send(text);
    int left = 0;
    for (int quiet = 0; quiet < 6; ++quiet) {
        QVERIFY(line.second());
        QTest::qWait(1000);
        const int former = std::exchange(left, line.thread.sendBuffer.mGet().size());
        if (former != left)
            quiet = 0;
    }
    QVERIFY(!line.ended());
    QVERIFY(left > 0);
    QCOMPARE(line.states().size(), 1);
    QCOMPARE(line.thread.sentLog.mGet().size(), text.size() - left);

    peer->socket->setReadBufferSize(0); // it reads after all
    QByteArray got;
    QTRY_COMPARE_WITH_TIMEOUT((got += peer->socket->readAll()).size(), text.size(), 60000);
    QCOMPARE(QString::fromLatin1(got), text);
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.sentLog.mGet(), text, 20000);
}

// What it grants does not reach its machine's room; the grant serves the chunk that finds room again.
void TestTcpDelivery::windowOfAPeerThatDoesNotReadIsKept()
{
    Line line;
    giveLittleRoom(*m_server);
    const auto peer = join(line);
    QVERIFY(peer);
    stopReading(*peer);
    const QString text = letters(10000);
    line.send(text);
    // The first chunk is late where the link's thread is.
    QTRY_VERIFY(line.thread.sendBuffer.mGet().size() < text.size());
    int left = text.size();
    const auto stands = [&] {
        const int former = std::exchange(left, line.thread.sendBuffer.mGet().size());
        QTest::qWait(1000);
        return former == left && line.thread.sendBuffer.mGet().size() == left;
    };
    QVERIFY(QTest::qWaitFor(stands, 60000));
    QVERIFY(left > 0);
    peer->send("\xB5"); // ten characters
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.shownWindow.load(), 10, 20000);
    QTest::qWait(200);
    QCOMPARE(line.thread.sendBuffer.mGet().size(), left);
    peer->socket->setReadBufferSize(0);
    QByteArray got;
    const int sent = text.size() - left + 10;
    QTRY_COMPARE_WITH_TIMEOUT((got += peer->socket->readAll()).size(), sent + 1, 30000);
    QCOMPARE(QString::fromLatin1(got.remove(sent - 10, 1)), text.left(sent)); // BF answered the window
}

QTEST_GUILESS_MAIN(TestTcpDelivery)
#include "test_tcp_delivery.moc"
