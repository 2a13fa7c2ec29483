// A TCP link between two machines whose cable is pulled, or of which one is switched off. The waits of the
// operating system are real, the seconds of the link pass by slotOnSec().

#include "app/options.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/two_machines.h"

#include <QTcpServer>
#include <QtTest>

class TestTcpCable : public QObject
{
    Q_OBJECT

public:
    explicit TestTcpCable(const TwoMachines &machines) : m_machines(machines) {}

private slots:
    void init();
    void cleanup();
    void oneChunkIsOnItsWayWhenTheCableIsPulled();
    void restGoesOutOnTheNextLink();
    void machineThatIsGoneIsNoticed();
    void idleMachineThatIsGoneIsNoticed();
    void serverNoticesAMachineThatIsGone();
    void interruptionIsOutlived();
    void bufferIsNotEmptyBeforeTheLastChunkArrives();
    void withdrawnTextDoesNotComeBack();
    void nothingIsTakenFromTheWindowWhileAChunkIsOnItsWay();

private:
    void callFar(Line &line) const;
    [[nodiscard]] std::unique_ptr<Peer> accept();
    void passSeconds(Line &line, int most) const;

    const TwoMachines &m_machines;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<QTcpServer> m_server;
};

namespace
{
constexpr int Chunk = 32;

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
} // namespace

void TestTcpCable::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 2;
    Options.TimeOut = 3;
    m_machines.standFar();
    m_server = std::make_unique<QTcpServer>();
    const bool listens = m_server->listen(QHostAddress(QString::fromLatin1(TwoMachines::FarAddress)));
    m_machines.standNear();
    QVERIFY(listens);
}

void TestTcpCable::cleanup()
{
    m_machines.plugCable();
    m_server.reset();
}

void TestTcpCable::callFar(Line &line) const
{
    line.thread.setTcp(QString::fromLatin1(TwoMachines::FarAddress), m_server->serverPort(), false);
    line.once(&CTlgThread::TcpIPThread);
}

std::unique_ptr<Peer> TestTcpCable::accept()
{
    if (!QTest::qWaitFor([&] { return m_server->hasPendingConnections(); }, 20000))
        return nullptr;
    QTcpSocket *socket = m_server->nextPendingConnection();
    socket->setParent(nullptr); // the peer owns it now
    return std::make_unique<Peer>(socket);
}

/// Seconds pass for the link and the system alike until the link ends, but no more than \a most.
void TestTcpCable::passSeconds(Line &line, int most) const
{
    for (int i = 0; i < most && !line.ended(); ++i) {
        QVERIFY(line.second());
        QTest::qWait(1000);
    }
}

void TestTcpCable::oneChunkIsOnItsWayWhenTheCableIsPulled()
{
    const QString text = letters(20000);
    Line line;
    line.send(text);
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY_WITH_TIMEOUT(peer->got.size() > 100, 20000);
    m_machines.pullCable();
    passSeconds(line, 2 * Options.TimeOut);
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    QCOMPARE(line.states().size(), 3);
    QVERIFY(line.states().at(1).endsWith(qs(": Ошибка отправки данных")));
    QVERIFY(line.states().at(2).endsWith(qs(": Соединение закрыто")));
    const QString sent = line.thread.sentLog.mGet(), arrived = QString::fromLatin1(peer->got);
    QVERIFY(arrived == sent || arrived == text.left(sent.size() + Chunk)); // its answer may be lost
    QVERIFY(text == sent + line.thread.sendBuffer.mGet());
}

void TestTcpCable::restGoesOutOnTheNextLink()
{
    const QString text = letters(300);
    Line line;
    callFar(line);
    auto peer = accept();
    QVERIFY(peer);
    line.send(text.left(100));
    QTRY_VERIFY_WITH_TIMEOUT(line.thread.sendBuffer.mIsEmpty(), 20000);
    m_machines.pullCable();
    line.send(text.mid(100));
    passSeconds(line, 2 * Options.TimeOut);
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    QCOMPARE(QString::fromLatin1(peer->got), text.left(100));
    QCOMPARE(line.thread.sendBuffer.mGet(), text.mid(100));

    m_machines.plugCable();
    callFar(line);
    const auto next = accept();
    QVERIFY(next);
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromLatin1(next->got), text.mid(100), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.sentLog.mGet(), text, 20000);
    QTest::qWait(2000);                                       // what was given up does not come after all
    QCOMPARE(QString::fromLatin1(peer->got), text.left(100)); // on the connection that is gone
}

// With nothing but the first chunk on its way, and to a peer that has never spoken.
void TestTcpCable::machineThatIsGoneIsNoticed()
{
    Line line;
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    line.send(qs("AB"));
    QTRY_COMPARE_WITH_TIMEOUT(peer->got, QByteArray("AB"), 20000);
    m_machines.switchFarOff();
    line.send(qs("CD"));
    passSeconds(line, 2 * Options.TimeOut);
    m_machines.switchFarOn();
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    QVERIFY(line.states().at(1).endsWith(qs(": Ошибка отправки данных")));
    QCOMPARE(line.thread.sentLog.mGet(), qs("AB"));
    QCOMPARE(line.thread.sendBuffer.mGet(), qs("CD"));
    QCOMPARE(line.thread.reconnectDelay.load(), 10);
}

void TestTcpCable::idleMachineThatIsGoneIsNoticed()
{
    Line line;
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    line.send(qs("AB"));
    QTRY_COMPARE_WITH_TIMEOUT(peer->got, QByteArray("AB"), 20000);
    m_machines.switchFarOff();
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    m_machines.switchFarOn();
    QCOMPARE(line.states().size(), 2);
    QVERIFY(line.lastState().endsWith(qs(": Соединение закрыто")));
}

void TestTcpCable::serverNoticesAMachineThatIsGone()
{
    Line line;
    const quint16 port = freePort();
    line.listenOnce(port, TwoMachines::FarAddress);
    QTRY_COMPARE(line.states().size(), 1);
    m_machines.standFar();
    Peer peer(new QTcpSocket);
    peer.socket->connectToHost(QHostAddress(QString::fromLatin1(TwoMachines::NearAddress)), port);
    m_machines.standNear();
    QTRY_VERIFY(line.thread.connected);
    line.send(qs("AB"));
    QTRY_COMPARE_WITH_TIMEOUT(peer.got, QByteArray("AB"), 20000);
    m_machines.switchFarOff();
    line.send(letters(100));
    passSeconds(line, 2 * Options.TimeOut);
    m_machines.switchFarOn();
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    QVERIFY(line.states().at(3).endsWith(qs(": Ошибка отправки данных")));
    QCOMPARE(line.thread.sendBuffer.mGet(), letters(100));
    QCOMPARE(line.thread.reconnectDelay.load(), 5);
}

// Shorter than the time-out: everything arrives once.
void TestTcpCable::interruptionIsOutlived()
{
    Options.TimeOut = 30;
    const QString text = letters(1000);
    Line line;
    line.send(text);
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY_WITH_TIMEOUT(peer->got.size() > 100, 20000);
    m_machines.pullCable();
    passSeconds(line, 3);
    m_machines.plugCable();
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromLatin1(peer->got), text, 30000);
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.sentLog.mGet(), text, 20000);
    QVERIFY(line.thread.sendBuffer.mIsEmpty());
    QVERIFY(!line.ended());
}

void TestTcpCable::bufferIsNotEmptyBeforeTheLastChunkArrives()
{
    Options.TimeOut = 30;
    Line line;
    QObject desk; // on this thread, so that the signal arrives queued
    int reports = 0;
    connect(&line.thread, &CTlgThread::signalOnSended, &desk, [&] { ++reports; });
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY(line.thread.connected);
    m_machines.pullCable();
    line.send(qs("AB"));
    passSeconds(line, 3);
    QCOMPARE(line.thread.sendBuffer.mGet(), qs("AB"));
    QVERIFY(line.thread.sentLog.mIsEmpty());
    QCOMPARE(reports, 0);
    m_machines.plugCable();
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.sentLog.mGet(), qs("AB"), 30000);
    QVERIFY(line.thread.sendBuffer.mIsEmpty());
    QTRY_VERIFY(reports > 0);
    QCOMPARE(peer->got, QByteArray("AB"));
}

void TestTcpCable::withdrawnTextDoesNotComeBack()
{
    Line line;
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY(line.thread.connected);
    m_machines.pullCable();
    line.send(letters(100));
    passSeconds(line, 2);
    QCOMPARE(line.thread.sendBuffer.mTake(), letters(100));
    line.send(qs("AB"));
    passSeconds(line, 2 * Options.TimeOut);
    QTRY_VERIFY_WITH_TIMEOUT(line.ended(), 20000);
    QCOMPARE(line.thread.sendBuffer.mGet(), qs("AB"));
    QVERIFY(line.thread.sentLog.mIsEmpty());
}

// The window that came before the interruption serves the chunk behind it.
void TestTcpCable::nothingIsTakenFromTheWindowWhileAChunkIsOnItsWay()
{
    Options.TimeOut = 30;
    Line line;
    callFar(line);
    const auto peer = accept();
    QVERIFY(peer);
    QTRY_VERIFY(line.thread.connected);
    line.send(letters(40));
    QTRY_COMPARE_WITH_TIMEOUT(peer->got.size(), 40, 20000);
    peer->send("\xB5");
    QTRY_COMPARE_WITH_TIMEOUT(peer->got.right(1), QByteArray("\xBF"), 20000);
    line.send(letters(10));
    QTRY_COMPARE_WITH_TIMEOUT(peer->got.size(), 51, 20000); // this window is used up
    m_machines.pullCable();
    line.send(letters(20));
    passSeconds(line, 2);
    QCOMPARE(line.thread.sendBuffer.mGet(), letters(20));
    m_machines.plugCable();
    peer->send("\xB5");
    QTRY_COMPARE_WITH_TIMEOUT(line.thread.sendBuffer.mGet(), letters(20).mid(10), 30000);
}

int main(int argc, char *argv[])
{
    const TwoMachines machines;
    QCoreApplication app(argc, argv);
    TestTcpCable test(machines);
    return QTest::qExec(&test, argc, argv);
}
#include "test_tcp_cable.moc"
