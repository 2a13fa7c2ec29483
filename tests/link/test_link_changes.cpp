// Links that follow each other: what one leaves behind must not reach the next.

#include "tests/link/adapter_port.h"
#include "tests/support/row.h"

#include <QSet>
#include <QTcpServer>
#include <QtTest>

class TestLinkChanges : public QObject
{
    Q_OBJECT

private slots:
    void everyLinkBeginsCleanBehindEveryOther();
    void linkThatComesToNothingBeginsCleanToo_data();
    void linkThatComesToNothingBeginsCleanToo();
};

namespace
{
constexpr int Patience = 15000;
enum Kind { Adapter, Client, Server };
const char *const kinds[] = {"adapter", "client", "server"};

/// One link thread on which the kinds of link take turns, and the far end of each.
class Turns
{
public:
    Turns()
    {
        if (!m_listener.listen(QHostAddress::LocalHost))
            qFatal("no port to be had");
    }

    [[nodiscard]] bool begin(Kind kind)
    {
        m_peer.reset();
        if (kind == Adapter)
            return thread.setTrelo("10000001", 100, false) && link.open("170b0b");
        if (kind == Client) {
            link.line.connectOnce(m_listener.serverPort());
            if (!QTest::qWaitFor([this] { return m_listener.hasPendingConnections(); }, Patience))
                return false;
            m_peer.reset(m_listener.nextPendingConnection());
        } else {
            const quint16 port = freePort();
            link.line.listenOnce(port);
            if (!shows("Ожидание подключения"))
                return false;
            m_peer = std::make_unique<QTcpSocket>();
            m_peer->connectToHost(QHostAddress::LocalHost, port);
        }
        return shows("Соединено ");
    }
    [[nodiscard]] bool end()
    {
        thread.restartThread();
        const bool ended = link.ended();
        (void)link.received(); // the main thread's by now
        return ended;
    }

    /// Leaves all behind that a link of the kind can: half a command, a credit, text in the adapter's hands,
    /// a broken line without a signal. The send buffer keeps "ZZ".
    void spoil(Kind kind)
    {
        if (kind != Adapter) {
            m_peer->write("@07*@N1"); // the peer has spoken, so nothing goes without a window
            QTRY_COMPARE_WITH_TIMEOUT(thread.txCredit.load(), 7, Patience);
            link.line.send("ZZ");
            return;
        }
        link.line.send("EA");
        link.adapter.send("22");
        QTRY_COMPARE_WITH_TIMEOUT(thread.pendingEcho.mGet(), QString("EA"), Patience);
        link.line.send("ZZ");
        link.adapter.send("4f5e20"); // no credit
        QTRY_COMPARE_WITH_TIMEOUT(thread.lineError.load(), 3, Patience);
        QVERIFY(!thread.allSent);
    }

    /// The state that a link begins with, and text both ways, first the "ZZ" that waits.
    void verifyClean(Kind kind)
    {
        QTRY_VERIFY_WITH_TIMEOUT(thread.linkUp(), Patience);
        QCOMPARE(thread.pendingEcho.mGet(), QString());
        if (kind == Adapter) {
            QVERIFY(thread.allSent);
            link.adapter.send("2203"); // "A"
            QTRY_COMPARE_WITH_TIMEOUT(link.adapter.got(), QByteArray("661111"), Patience);
            link.adapter.send("91913f"); // both are on the line
        } else {
            QTRY_COMPARE_WITH_TIMEOUT(m_peer->peek(9), QByteArray("ZZ"), Patience);
            QCOMPARE(thread.txCredit.load(), 32);
            QVERIFY(thread.allSent);
            m_peer->write("A");
        }
        QTRY_COMPARE_WITH_TIMEOUT(thread.recvBuffer.mGet(), QString("A"), Patience);
        (void)link.received();
        QTRY_VERIFY_WITH_TIMEOUT(thread.allSent && thread.sendBuffer.mIsEmpty(), Patience);
        QTRY_COMPARE_WITH_TIMEOUT(thread.pendingEcho.mGet(), QString(), Patience);
    }

    AdapterLink link;
    CTlgThread &thread = link.thread;

private:
    [[nodiscard]] bool shows(const char *end) const
    {
        return QTest::qWaitFor([&] { return link.line.lastState().endsWith(end); }, Patience);
    }

    QTcpServer m_listener;
    std::unique_ptr<QTcpSocket> m_peer;
};

QString transition(Kind from, Kind to)
{
    return QString("%1, then %2").arg(kinds[from], kinds[to]);
}
} // namespace

void TestLinkChanges::everyLinkBeginsCleanBehindEveryOther()
{
    const Kind walk[] = {Adapter, Adapter, Client, Client, Server, Server, Adapter, Server, Client, Adapter};
    QSet<QString> walked;
    Turns turns;
    QVERIFY(turns.begin(walk[0]));
    for (int i = 1; i < int(std::size(walk)); ++i) {
        const QString step = transition(walk[i - 1], walk[i]);
        qInfo("%s", qPrintable(step));
        turns.spoil(walk[i - 1]);
        QVERIFY(turns.end());
        QVERIFY(turns.begin(walk[i]));
        turns.verifyClean(walk[i]);
        if (QTest::currentTestFailed())
            return;
        walked << step;
    }
    QCOMPARE(walked.size(), 3 * 3);
}

void TestLinkChanges::linkThatComesToNothingBeginsCleanToo_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (const Kind from : {Adapter, Client, Server})
        for (const Kind to : {Adapter, Client, Server})
            row(qPrintable(transition(from, to)), int(from), int(to));
}

// No device, nobody who takes the call, a port that is taken: each is over at once.
void TestLinkChanges::linkThatComesToNothingBeginsCleanToo()
{
    QFETCH(int, from);
    QFETCH(int, to);
    const Desk desk;
    QTcpServer taken;
    QVERIFY(taken.listen(QHostAddress::Any));
    CTlgThread thread;
    thread.linkType = from;
    thread.connected = true;
    thread.lineError = from == Adapter ? 3 : 0;
    thread.allSent = from != Adapter;
    thread.statusPending = from == Adapter;
    thread.pendingEcho.mSet(from == Adapter ? "EA" : "");
    thread.synCountdown = from == Adapter ? 0 : 30;
    thread.peerWindow = from == Adapter ? 0 : 10;
    thread.needVersion = true;
    thread.sendBuffer.mAppend("ZZ");
    thread.recvBuffer.mAppend("A");

    thread.setTcp("127.0.0.1", to == Server ? taken.serverPort() : freePort(), to == Server);
    if (to == Adapter)
        thread.PortThread();
    else if (to == Client)
        thread.TcpIPThread();
    else
        thread.TcpIPSrvThread();
    QVERIFY(!thread.connected && thread.allSent && !thread.statusPending);
    QCOMPARE(thread.lineError.load(), 0);
    QCOMPARE(thread.synCountdown, 0);
    QCOMPARE(thread.peerWindow, 0);
    QCOMPARE(thread.pendingEcho.mGet(), QString());
    QVERIFY(thread.needVersion); // asked by the settings, for the next adapter
    QCOMPARE(thread.sendBuffer.mGet(), QString("ZZ"));
    QCOMPARE(thread.recvBuffer.mGet(), QString("A"));
}

QTEST_GUILESS_MAIN(TestLinkChanges)
#include "test_link_changes.moc"
