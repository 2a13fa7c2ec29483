// The loop of the link thread: its states, its setters, two links joined to each other.

#include "app/options.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"

#include <QDeadlineTimer>
#include <QTcpServer>
#include <QtTest>

#include <atomic>

class TestLinkThread : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void threadBeginsPaused();
    void settersAskForAnewStart();
    void linkIsUpOnlyConnectedAndWithoutLineError();
    void pausedThreadIdlesAndStops();
    void waitFallsBySecondsAndARestartCutsIt();
    void pauseClosesTheLinkAndRestartBringsItBack();
    void pauseForgetsTheWait();
    void failureIsShownAgainAfterASuccess();
    void pauseIsNeverLostOnALinkThatBegins();
    void everyIdleStateStopsAtOnce();
    void twoWorkstationsTalk();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestLinkThread::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
}

void TestLinkThread::threadBeginsPaused()
{
    const CTlgThread thread;
    QVERIFY(thread.paused);
    QVERIFY(thread.reportFailure);
    QVERIFY(thread.allSent);
    QVERIFY(!thread.connected);
    QVERIFY(!thread.linkUp());
    QCOMPARE(thread.shownWindow.load(), -1);
    QCOMPARE(thread.txCredit.load(), 32);
    QCOMPARE(thread.backoffMinutes, 1);
    QCOMPARE(thread.synCountdown, 0);
    QCOMPARE(thread.frameStartData, qs("&#"));
    QCOMPARE(thread.frameStartAck, qs("&|"));
}

void TestLinkThread::settersAskForAnewStart()
{
    CTlgThread thread;
    thread.reportFailure = false;
    thread.reconnectDelay = 60;
    QVERIFY(thread.setTcp(qs("10.0.0.1"), 1234, false));
    QCOMPARE(thread.linkType.load(), int(CTlgThread::TcpClient));
    QCOMPARE(thread.tcpAddress, qs("10.0.0.1"));
    QCOMPARE(thread.tcpPort, 1234);
    QVERIFY(thread.reportFailure && thread.restartRequested && !thread.paused);
    QCOMPARE(thread.reconnectDelay.load(), 0);
    QVERIFY(thread.setTcp(qs("10.0.0.2"), 4321, true));
    QCOMPARE(thread.linkType.load(), int(CTlgThread::TcpServer));

    thread.restartRequested = false;
    thread.pauseThread();
    QVERIFY(thread.paused && thread.restartRequested);

    thread.restartRequested = false;
    thread.reportFailure = false;
    thread.reconnectDelay = 60;
    thread.restartThread();
    QVERIFY(thread.reportFailure && thread.restartRequested && !thread.paused);
    QCOMPARE(thread.reconnectDelay.load(), 0);

    thread.slotOnSec();
    QVERIFY(thread.secondTick);
    thread.stopThread();
    QVERIFY(thread.stopRequested);
}

void TestLinkThread::linkIsUpOnlyConnectedAndWithoutLineError()
{
    CTlgThread thread;
    thread.connected = true;
    QVERIFY(thread.linkUp());
    for (const int error : {1, 2, 3}) {
        thread.lineError = error;
        QVERIFY(!thread.linkUp());
    }
    thread.lineError = 0;
    thread.connected = false;
    QVERIFY(!thread.linkUp());
}

void TestLinkThread::pausedThreadIdlesAndStops()
{
    Line line;
    line.thread.restartRequested = true;
    line.thread.reconnectDelay = 60;
    line.thread.shownWindow = 5;
    line.thread.start(QThread::InheritPriority);
    QTRY_VERIFY(!line.thread.restartRequested);
    QCOMPARE(line.thread.reconnectDelay.load(), 0);
    QCOMPARE(line.thread.shownWindow.load(), -1);
    QVERIFY(line.states().isEmpty());
    line.thread.stopThread();
    QVERIFY(line.thread.wait(PatienceMs));
}

void TestLinkThread::waitFallsBySecondsAndARestartCutsIt()
{
    const quint16 port = freePort();
    Line line;
    line.thread.setTcp(qs("127.0.0.1"), port, false);
    line.thread.start(QThread::InheritPriority);
    QTRY_VERIFY(line.thread.reconnectDelay > 0);
    QVERIFY(line.thread.reconnectDelay > 30 && line.thread.reconnectDelay <= 60);
    const int before = line.thread.reconnectDelay;
    QTRY_VERIFY(line.thread.reconnectDelay < before);
    line.thread.restartThread();
    QTRY_VERIFY(line.thread.reconnectDelay > 100); // the next attempt waits 120 seconds
    QCOMPARE(line.states(), QStringList({qs("TCP (127.0.0.1:%1):Connection refused").arg(port),
                                         qs("TCP (127.0.0.1:%1):Connection refused").arg(port)}));
}

void TestLinkThread::pauseClosesTheLinkAndRestartBringsItBack()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    Line line;
    line.thread.setTcp(qs("127.0.0.1"), server.serverPort(), false);
    line.thread.start(QThread::InheritPriority);
    QTRY_VERIFY(line.thread.connected);
    line.thread.pauseThread();
    QTRY_VERIFY(!line.thread.connected);
    QTRY_VERIFY(!line.thread.restartRequested); // idle again
    QVERIFY(line.thread.paused);
    QCOMPARE(line.states().size(), 2);
    line.thread.restartThread();
    QTRY_VERIFY(line.thread.connected);
    QTRY_COMPARE(line.states().size(), 3);
}

// None sits out its wait: of the pauses, or the half minute that a peer has to hang up.
void TestLinkThread::pauseForgetsTheWait()
{
    CTlgThread thread;
    thread.setTcp(qs("127.0.0.1"), 1, false);
    thread.reconnectDelay = 60;
    thread.pauseThread();
    QVERIFY(!thread.takeTurn());
    QCOMPARE(thread.reconnectDelay.load(), 0);
    thread.paused = false; // by no restart, which forgets the wait itself
    QVERIFY(thread.takeTurn());
}

// Nobody takes the call, somebody does, nobody does: both failures are news.
void TestLinkThread::failureIsShownAgainAfterASuccess()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const quint16 port = server.serverPort();
    server.close();
    Line line;
    const QString failure = qs("TCP (127.0.0.1:%1):Connection refused").arg(port);
    line.thread.setTcp(qs("127.0.0.1"), port, false);
    line.thread.TcpIPThread();
    line.thread.TcpIPThread(); // no news
    QVERIFY(server.listen(QHostAddress::LocalHost, port));
    line.thread.restartRequested = true; // to be left as soon as it is up
    line.thread.TcpIPThread();
    server.close();
    line.thread.TcpIPThread();
    QCOMPARE(line.states().filter(failure), QStringList({failure, failure}));
}

// The thread's rounds without their seconds: a link lasts until it is asked to leave.
void TestLinkThread::pauseIsNeverLostOnALinkThatBegins()
{
    CTlgThread thread;
    std::atomic<bool> end = false;
    std::atomic<int> idleRounds = 0;
    const std::unique_ptr<QThread> rounds(QThread::create([&] {
        while (!end) {
            if (!thread.takeTurn()) {
                ++idleRounds;
                QThread::yieldCurrentThread();
                continue;
            }
            while (!thread.restartRequested && !end) {
            }
        }
    }));
    ThreadEnd ended(*rounds);
    rounds->start();
    bool lost = false;
    for (int pause = 0; pause < 100000 && !lost; ++pause) {
        thread.restartThread();
        for (volatile int i = pause % 500; i > 0; i = i - 1) { // hits every moment of the round
        }
        thread.pauseThread();
        const int before = idleRounds;
        const QDeadlineTimer patience(10000);
        while (idleRounds == before && !lost) {
            QThread::yieldCurrentThread();
            lost = patience.hasExpired();
        }
    }
    end = true;
    ended.join();
    QVERIFY(!lost);
}

void TestLinkThread::everyIdleStateStopsAtOnce()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    Line paused, waiting, listening, connected, served;
    const quint16 listenPort = freePort(), servedPort = freePort();
    waiting.thread.setTcp(qs("127.0.0.1"), freePort(), false);
    listening.thread.setTcp(qs("127.0.0.1"), listenPort, true);
    connected.thread.setTcp(qs("127.0.0.1"), server.serverPort(), false);
    served.thread.setTcp(qs("127.0.0.1"), servedPort, true);
    Line *const lines[] = {&paused, &waiting, &listening, &connected, &served};
    for (Line *line : lines)
        line->thread.start(QThread::InheritPriority);
    QTRY_VERIFY(listening.states().size() == 1 && served.states().size() == 1);
    Peer peer(servedPort);
    QTRY_VERIFY(waiting.thread.reconnectDelay > 0 && connected.thread.connected && served.thread.connected);
    QTRY_VERIFY(served.lastState().endsWith(qs(": Соединено ")));
    for (Line *line : lines)
        line->thread.stopThread();
    for (Line *line : lines)
        QVERIFY(line->thread.wait(10000));
}

void TestLinkThread::twoWorkstationsTalk()
{
    const quint16 port = freePort();
    Line server, client;
    server.thread.setTcp(qs("127.0.0.1"), port, true);
    server.thread.start(QThread::InheritPriority);
    QTRY_COMPARE(server.states().size(), 1);
    client.thread.setTcp(qs("127.0.0.1"), port, false);
    client.thread.start(QThread::InheritPriority);
    QTRY_VERIFY(server.thread.connected && client.thread.connected);
    const QString there = qs("|ЗЦЗЦ 001 ПРИВЕТ\r\n#123*@C@N12+@&QUEEN").repeated(20);
    const QString back = qs("|ПРИНЯТО@H").repeated(20);
    client.send(there);
    QTRY_COMPARE(server.thread.recvBuffer.mGet(), there);
    // Nobody grants windows here, so the answer goes only as far as the client has not yet spoken.
    QTRY_COMPARE(client.thread.sentLog.mGet(), there);
    QTRY_VERIFY(client.thread.sendBuffer.mIsEmpty());
    server.send(back);
    QTRY_VERIFY(server.thread.secondTick == false);
    QCOMPARE(server.thread.sendBuffer.mGet(), back);
    QVERIFY(client.thread.recvBuffer.mIsEmpty());
}

QTEST_GUILESS_MAIN(TestLinkThread)
#include "test_link_thread.moc"
