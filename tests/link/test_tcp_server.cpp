// The incoming link over real sockets. Seconds pass by slotOnSec(); only the waits inside the link are real.

#include "app/options.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"

#include <QTcpServer>
#include <QtTest>

class TestTcpServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void linkGoesThroughItsStates();
    void busyPortIsShownOnce();
    void foreignPeerIsSentAway();
    void foreignPeerNeverSetsConnected();
    void silentClientIsPolledEachSecond();
    void silenceEndsTheLink();
    void writeErrorEndsTheLinkAndKeepsTheText();
    void restartAndStopEndTheWait();
    void restartAndStopEndTheLink();
    void portIsClosedWhileTheLinkRests();
    void textBeforeAnEarlyLossIsKept();
    void secondCallerWaitsItsTurn();

private:
    [[nodiscard]] QString state(const char *text) const;

    std::unique_ptr<Desk> m_desk;
    quint16 m_port = 0;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestTcpServer::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
    m_port = freePort();
}

QString TestTcpServer::state(const char *text) const
{
    return qs("TcpServer (port:%1)").arg(m_port) + qs(text);
}

void TestTcpServer::linkGoesThroughItsStates()
{
    Line line;
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states(), QStringList(state(": Ожидание подключения")));
    QVERIFY(!line.thread.connected);
    Peer peer(m_port);
    QTRY_VERIFY(line.thread.connected);
    QVERIFY(line.thread.reportFailure);
    peer.send("\x80\x81\x16");
    QTRY_COMPARE(line.thread.recvBuffer.mGet(), qs("АБ"));
    QTRY_COMPARE(peer.got, QByteArray("\x16"));
    peer.send("\xBF");
    line.send(qs("ВГ"));
    QTRY_COMPARE(peer.got, QByteArray("\x16\xBF\x82\x83"));
    peer.socket->disconnectFromHost();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.states(),
             QStringList({state(": Ожидание подключения"), state(": Подключение с IP 127.0.0.1"),
                          state(": Соединено "), state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 5);
    QVERIFY(!line.thread.connected);
}

void TestTcpServer::busyPortIsShownOnce()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::Any, m_port));
    Line line;
    line.thread.setTcp(qs("127.0.0.1"), m_port, true);
    for (int i = 0; i < 3; ++i) {
        line.thread.TcpIPSrvThread();
        QCOMPARE(line.thread.reconnectDelay.load(), 60);
        QVERIFY(!line.thread.reportFailure);
    }
    QCOMPARE(line.states(), QStringList(state(": не удалось запустить The bound address is already in use")));
}

void TestTcpServer::foreignPeerIsSentAway()
{
    Line line;
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states().size(), 1);
    Peer foreign(m_port, "127.0.0.2");
    QTRY_COMPARE(line.lastState(), state(": попытка соединения с IP 127.0.0.2"));
    QTRY_VERIFY(!foreign.open());
    QVERIFY(!line.thread.connected);
    Peer peer(m_port);
    QTRY_COMPARE(line.lastState(), state(": Соединено "));
    QCOMPARE(line.states().size(), 4);
    QCOMPARE(line.thread.reconnectDelay.load(), 0);
}

void TestTcpServer::foreignPeerNeverSetsConnected()
{
    Line line;
    bool everConnected = false;
    QObject::connect(
        &line.thread, &CTlgThread::signalOnState, &line.thread,
        [&] { everConnected = everConnected || line.thread.connected; }, Qt::DirectConnection);
    line.listenOnce(m_port, "10.0.0.1");
    QTRY_COMPARE(line.states().size(), 1);
    for (int i = 0; i < 3; ++i) {
        Peer foreign(m_port);
        QTRY_COMPARE(line.states().count(state(": попытка соединения с IP 127.0.0.1")), i + 1);
        QTRY_VERIFY(!foreign.open());
    }
    line.thread.stopThread();
    QTRY_VERIFY(line.ended());
    QVERIFY(!everConnected);
    QVERIFY(line.thread.recvBuffer.mIsEmpty());
}

void TestTcpServer::silentClientIsPolledEachSecond()
{
    Options.TimeOut = 10;
    Line line;
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states().size(), 1);
    Peer peer(m_port);
    QTRY_COMPARE(line.lastState(), state(": Соединено "));
    QVERIFY(line.second()); // nobody is polled before it has spoken
    peer.send("\x16");
    QTRY_COMPARE(peer.got, QByteArray("\x16"));
    QVERIFY(line.second());
    QTRY_COMPARE(peer.got, QByteArray("\x16\xBF"));
    QVERIFY(line.second());
    QTRY_COMPARE(peer.got, QByteArray("\x16\xBF\xBF"));
}

void TestTcpServer::silenceEndsTheLink()
{
    Options.TimeOut = 3;
    Line line;
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states().size(), 1);
    Peer peer(m_port);
    peer.send("A");
    QTRY_VERIFY(!line.thread.recvBuffer.mIsEmpty());
    QVERIFY(line.second());
    QVERIFY(line.second());
    QCOMPARE(line.lastState(), state(": Соединено "));
    line.thread.slotOnSec();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.states().mid(3), QStringList({state(": Таймаут SYN 3сек"), state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 5);
    QTRY_COMPARE(peer.got, QByteArray("\xBF\xBF")); // no poll in the last second
    QTRY_VERIFY(!peer.open());
}

void TestTcpServer::writeErrorEndsTheLinkAndKeepsTheText()
{
    const QString text = QString(100000, QLatin1Char('A'));
    Line line;
    line.send(text);
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states().size(), 1);
    Peer peer(m_port);
    QTRY_VERIFY(peer.got.size() > 100);
    peer.reset();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.states().mid(3),
             QStringList({state(": Ошибка отправки данных"), state(": Соединение закрыто")}));
    QCOMPARE(line.thread.reconnectDelay.load(), 5);
    QCOMPARE(line.thread.sentLog.mGet().size() + line.thread.sendBuffer.mGet().size(), text.size());
}

void TestTcpServer::restartAndStopEndTheWait()
{
    const quint16 otherPort = freePort();
    Line restarted, stopped;
    restarted.listenOnce(m_port);
    stopped.listenOnce(otherPort);
    QTRY_VERIFY(restarted.states().size() == 1 && stopped.states().size() == 1);
    restarted.thread.restartThread();
    stopped.thread.stopThread();
    QTRY_VERIFY(restarted.ended() && stopped.ended());
    QCOMPARE(restarted.states().size(), 1);
    QCOMPARE(stopped.states().size(), 1);
}

void TestTcpServer::restartAndStopEndTheLink()
{
    const quint16 otherPort = freePort();
    Line restarted, stopped;
    restarted.listenOnce(m_port);
    stopped.listenOnce(otherPort);
    QTRY_VERIFY(restarted.states().size() == 1 && stopped.states().size() == 1);
    Peer first(m_port), second(otherPort);
    QTRY_VERIFY(restarted.thread.connected && stopped.thread.connected);
    restarted.thread.restartThread();
    stopped.thread.stopThread();
    QTRY_VERIFY(restarted.ended() && stopped.ended());
    QCOMPARE(restarted.lastState(), state(": Соединение закрыто"));
    QVERIFY(stopped.lastState().endsWith(qs(": Соединено ")));
    QTRY_VERIFY(!first.open() && !second.open());
}

void TestTcpServer::portIsClosedWhileTheLinkRests()
{
    Line line;
    for (int i = 0; i < 2; ++i) {
        line.listenOnce(m_port);
        QTRY_COMPARE(line.lastState(), state(": Ожидание подключения"));
        Peer peer(m_port);
        QTRY_VERIFY(peer.open());
        peer.reset();
        QTRY_VERIFY(line.ended());
        Peer late(m_port);
        QTRY_COMPARE(late.socket->error(), QAbstractSocket::ConnectionRefusedError);
    }
    QCOMPARE(line.states().count(state(": Соединение закрыто")), 2);
}

void TestTcpServer::textBeforeAnEarlyLossIsKept()
{
    Line line;
    line.listenOnce(m_port);
    QTRY_COMPARE(line.states().size(), 1);
    Peer peer(m_port);
    QTRY_VERIFY(peer.open());
    peer.send("\x80\x81");
    peer.socket->disconnectFromHost();
    QTRY_VERIFY(line.ended());
    QCOMPARE(line.thread.recvBuffer.mGet(), qs("АБ"));
    QCOMPARE(line.lastState(), state(": Соединение закрыто"));
}

void TestTcpServer::secondCallerWaitsItsTurn()
{
    Line line;
    line.listenOnce(m_port, "127.0.0.1");
    QTRY_COMPARE(line.states().size(), 1);
    Peer foreign(m_port, "127.0.0.2");
    Peer peer(m_port); // both are there before the server looks
    QTRY_COMPARE(line.lastState(), state(": Соединено "));
    QTRY_VERIFY(!foreign.open());
    QVERIFY(peer.open());
}

QTEST_GUILESS_MAIN(TestTcpServer)
#include "test_tcp_server.moc"
