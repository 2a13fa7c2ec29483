// Peers that flood, send noise, or do not read what they are answered: memory stays bounded, no text of an
// honest peer is lost, and the link can be stopped.

#include "app/options.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QtTest>

class TestTcpHostile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void floodIsHeldBackAndNotLost();
    void peerThatReadsNothingIsHeldBack();
    void tenMegabytesOfNoisePass_data();
    void tenMegabytesOfNoisePass();
    void peerMayCloseInEveryState();
    void linkThatIsFloodedStops();

private:
    [[nodiscard]] std::unique_ptr<Peer> join(Line &line);

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<QTcpServer> m_server;
};

namespace
{
constexpr int StopMs = 10000; // a third of what a peer has to hang up

QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// Writes as much of \a bytes as the link takes, a little at a time.
class Pump
{
public:
    Pump(Peer &peer, const QByteArray &bytes) : m_peer(peer), m_bytes(bytes) {}

    /// Fills the socket; true when all has gone.
    bool step()
    {
        QTcpSocket &socket = *m_peer.socket;
        while (m_done < m_bytes.size() && socket.bytesToWrite() < 65536)
            m_done += int(socket.write(m_bytes.constData() + m_done, qMin(65536, m_bytes.size() - m_done)));
        return m_done == m_bytes.size() && socket.bytesToWrite() == 0;
    }
    [[nodiscard]] qint64 gone() const { return m_done - m_peer.socket->bytesToWrite(); }

    /// Goes on until nothing has moved for a second; \a meanwhile runs between two pushes.
    template <class Work> void untilStuck(Work meanwhile)
    {
        qint64 former = -1;
        while (former != gone()) {
            former = gone();
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 1000 && former == gone()) {
                step();
                meanwhile();
                QTest::qWait(10);
            }
        }
    }

private:
    Peer &m_peer;
    QByteArray m_bytes;
    int m_done = 0;
};
} // namespace

void TestTcpHostile::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
}

std::unique_ptr<Peer> TestTcpHostile::join(Line &line)
{
    line.connectOnce(m_server->serverPort());
    if (!comesTrue([&] { return m_server->hasPendingConnections(); }))
        return nullptr;
    QTcpSocket *socket = m_server->nextPendingConnection();
    socket->setParent(nullptr);
    return std::make_unique<Peer>(socket);
}

void TestTcpHostile::floodIsHeldBackAndNotLost()
{
    QByteArray flood;
    for (int i = 0; flood.size() < 20000000; ++i)
        flood += QByteArray::number(i) + ' ';
    Line line;
    const auto peer = join(line);
    QVERIFY(peer);
    Pump pump(*peer, flood);
    const auto held = [&] {
        const QMutexLocker lock(&line.thread.recvBuffer.mutex);
        return line.thread.recvBuffer.text.size();
    };
    QVERIFY(comesTrue([&] { return (pump.step(), held() > 1024 * 1024); })); // the program takes nothing
    pump.untilStuck([] {});
    QVERIFY(held() <= 1024 * 1024 + 65536);
    QVERIFY(pump.gone() < flood.size()); // the network holds the rest back
    QString taken;
    QVERIFY(QTest::qWaitFor(
        [&] {
            pump.step();
            taken += line.thread.recvBuffer.mTake();
            return taken.size() >= flood.size();
        },
        60000));
    QVERIFY(taken == QString::fromLatin1(flood));
}

void TestTcpHostile::peerThatReadsNothingIsHeldBack()
{
    Line line;
    const auto peer = join(line);
    QVERIFY(peer);
    peer->socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 4096);
    peer->socket->setReadBufferSize(1);
    peer->socket->disconnect(); // nobody reads
    const QByteArray windows = QByteArray("\xB0"
                                          "A")
                                   .repeated(10000000);
    Pump pump(*peer, windows);
    pump.untilStuck([&] { (void)line.thread.recvBuffer.mTake(); });
    QVERIFY2(pump.gone() < windows.size(), "the link went on reading");
    line.thread.stopThread();
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), StopMs);
}

void TestTcpHostile::tenMegabytesOfNoisePass_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("guaranteed");
    row("centre", 0, false);
    row("switched channels", 1, false);
    row("direct", 2, false);
    row("guaranteed transfer", 2, true);
}

void TestTcpHostile::tenMegabytesOfNoisePass()
{
    QFETCH(int, mode);
    QFETCH(bool, guaranteed);
    Options.processMode = mode;
    QRandomGenerator random(31072026);
    QByteArray noise(10000000, '\0');
    random.fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
    Line line;
    if (guaranteed)
        line.thread.startProtectedMode();
    const auto peer = join(line);
    QVERIFY(peer);
    Pump pump(*peer, noise);
    int most = 0;
    QVERIFY(QTest::qWaitFor(
        [&] {
            most = qMax(most, line.thread.recvBuffer.mTake().size());
            return pump.step();
        },
        60000));
    QVERIFY(most <= 1024 * 1024 + 65536);
    // The line is as good as before: whatever noise left open has ended, and text passes.
    peer->send(QByteArray(2000, ' ') + "A@C\x80\x81\x82");
    QString taken;
    QVERIFY(comesTrue([&] {
        taken += line.thread.recvBuffer.mTake();
        return taken.endsWith(qs("A@CАБВ"));
    }));
}

void TestTcpHostile::peerMayCloseInEveryState()
{
    // Before the first second, with half a command, with a window granted, with none, in a flood.
    const QByteArray lastWords[] = {"", "@N12", "\xB5", "A", QByteArray(300000, 'A')};
    std::vector<std::unique_ptr<Line>> lines;
    std::vector<std::unique_ptr<Peer>> peers;
    for (const QByteArray &words : lastWords) {
        lines.push_back(std::make_unique<Line>());
        lines.back()->send(QString(1000, QLatin1Char('B')) + qs("@N12"));
        peers.push_back(join(*lines.back()));
        QVERIFY(peers.back());
        if (!words.isEmpty())
            peers.back()->send(words);
    }
    peers.front()->reset();
    QTRY_VERIFY(lines.back()->thread.recvBuffer.mGet().size() > 100000);
    for (const auto &peer : peers)
        peer->reset();
    for (const auto &line : lines) {
        QTRY_VERIFY(line->ended());
        QVERIFY(!line->thread.connected);
        QVERIFY(line->thread.reconnectDelay > 0);
        QCOMPARE(line->thread.sentLog.mGet().size() + line->thread.sendBuffer.mGet().size(), 1004);
    }
}

void TestTcpHostile::linkThatIsFloodedStops()
{
    Line line;
    const auto peer = join(line);
    QVERIFY(peer);
    Pump pump(*peer, QByteArray(5000000, 'A'));
    pump.untilStuck([] {});
    line.thread.stopThread();
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), StopMs);
}

// With no file descriptor left the server cannot take the caller that has come.
QTEST_GUILESS_MAIN(TestTcpHostile)
#include "test_tcp_hostile.moc"
