// A listening link on a system without a free descriptor.

#include "tests/link/line.h"
#include "tests/support/desk.h"

#include <QtTest>

#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

class TestTcpDescriptors : public QObject
{
    Q_OBJECT

private slots:
    void failureToTakeACallerIsShown();
};

namespace
{
/// A process without a free file descriptor, but for one call to the link.
class Descriptors
{
public:
    Descriptors() : m_socket(::socket(AF_INET, SOCK_STREAM, 0)) { ::getrlimit(RLIMIT_NOFILE, &m_former); }
    ~Descriptors()
    {
        ::setrlimit(RLIMIT_NOFILE, &m_former);
        for (const int taken : m_taken)
            ::close(taken);
        ::close(m_socket);
    }
    Descriptors(const Descriptors &) = delete;
    Descriptors &operator=(const Descriptors &) = delete;

    bool callWithLastOne(quint16 port)
    {
        rlimit few = m_former;
        few.rlim_cur = 100;
        if (::setrlimit(RLIMIT_NOFILE, &few) != 0)
            return false;
        for (int taken = ::dup(m_socket); taken >= 0; taken = ::dup(m_socket))
            m_taken.push_back(taken);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    }

private:
    int m_socket;
    std::vector<int> m_taken;
    rlimit m_former = {};
};
} // namespace

void TestTcpDescriptors::failureToTakeACallerIsShown()
{
    const Desk desk;
    // A sanitizer looks at a type for the first time with descriptors of its own: a thread ends before they
    // go.
    Line first;
    first.connectOnce(freePort());
    QTRY_VERIFY(first.ended());
    const quint16 port = freePort();
    Line line;
    line.listenOnce(port);
    QTRY_COMPARE(line.states().size(), 1);
    Descriptors descriptors;
    QVERIFY(descriptors.callWithLastOne(port));
    QTRY_VERIFY(line.ended());
    const QString prefix = QString("TcpServer (port:%1): ").arg(port);
    QCOMPARE(line.states().size(), 2);
    QVERIFY(line.lastState().startsWith(prefix));
    QVERIFY(line.lastState().size() > prefix.size());
    QCOMPARE(line.thread.reconnectDelay.load(), 60);
    QVERIFY(!line.thread.reportFailure);
    QVERIFY(!line.thread.connected);
}

QTEST_GUILESS_MAIN(TestTcpDescriptors)
#include "test_tcp_descriptors.moc"
