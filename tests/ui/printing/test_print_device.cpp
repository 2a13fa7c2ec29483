#include "tests/ui/printing/printer_desk.h"
#include "text/utils.h"

#include <QElapsedTimer>
#include <QtTest>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
/// A port that completes no connection: its queue of one is taken.
class DeafPort
{
public:
    DeafPort() : m_listener(socket(AF_INET, SOCK_STREAM, 0)), m_caller(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto *const plain = reinterpret_cast<sockaddr *>(&address);
        if (bind(m_listener, plain, length) != 0 || listen(m_listener, 0) != 0 ||
            getsockname(m_listener, plain, &length) != 0 || connect(m_caller, plain, length) != 0)
            qFatal("cannot make a deaf port");
        port = ntohs(address.sin_port);
    }
    ~DeafPort()
    {
        close(m_caller);
        close(m_listener);
    }
    DeafPort(const DeafPort &) = delete;
    DeafPort &operator=(const DeafPort &) = delete;

    quint16 port = 0;

private:
    int m_listener;
    int m_caller;
};
} // namespace

/// Raw printing to devices that take nothing, and to a machine that does not answer.
class TestPrintDevice : public QObject
{
    Q_OBJECT

private slots:
    void deviceWithoutRoomIsJournalled();
    void deafHostIsGivenUpAfterThreeSeconds();
    void hangingDeviceHoldsUpNobody();
};

void TestPrintDevice::deviceWithoutRoomIsJournalled()
{
    const PrinterDesk desk("/dev/full");
    CUtils::printText("A");
    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error write to printer /dev/full", QString()}));
}

void TestPrintDevice::deafHostIsGivenUpAfterThreeSeconds()
{
    const DeafPort deaf;
    const QString address = QString("127.0.0.1:%1").arg(deaf.port);
    const PrinterDesk desk("IP:" + address);
    QElapsedTimer timer;
    timer.start();
    CUtils::printText("A");
    QCOMPARE(desk.journal(), QStringList{QString()}); // nobody has waited for it

    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error connect to printer " + address,
                                              "412:00:00 Socket operation timed out", QString()}));
    QVERIFY(timer.elapsed() >= 2900);
}

void TestPrintDevice::hangingDeviceHoldsUpNobody()
{
    const PrinterDesk desk("pipe");
    QCOMPARE(mkfifo(desk.path("pipe").toUtf8().constData(), 0600), 0); // to open it waits for a reader
    CUtils::printText("A");
    CUtils::printText("B");
    QVERIFY(!CPrintQueue::instance().waitForIdle(0));

    // Open for both, so that what one writer leaves behind is not dropped before the next one comes.
    const int pipe = ::open(desk.path("pipe").toUtf8().constData(), O_RDWR);
    QVERIFY(pipe >= 0);
    QByteArray all;
    char byte = 0;
    while (all.size() < 2 && ::read(pipe, &byte, 1) == 1)
        all += byte;
    ::close(pipe);
    QCOMPARE(all, QByteArray("AB"));
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
}

QTEST_GUILESS_MAIN(TestPrintDevice)
#include "test_print_device.moc"
