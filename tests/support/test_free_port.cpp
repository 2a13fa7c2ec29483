// The ports that tests listen on.

#include "tests/support/free_port.h"

#include <QSet>
#include <QTcpServer>
#include <QUdpSocket>
#include <QtTest>

class TestFreePort : public QObject
{
    Q_OBJECT

private slots:
    void eachCallGivesAnotherOne();
    void nobodyListensOnIt();
    void noOutgoingConnectionGetsIt();
    void portsInUseArePassedOver();
    void portsOfAnotherTestArePassedOver();
};

void TestFreePort::eachCallGivesAnotherOne()
{
    QSet<quint16> ports;
    for (int i = 0; i < 50; ++i)
        ports << freePort();
    QCOMPARE(ports.size(), 50);
}

void TestFreePort::nobodyListensOnIt()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::Any, freePort()));
}

void TestFreePort::noOutgoingConnectionGetsIt()
{
    QFile range("/proc/sys/net/ipv4/ip_local_port_range"); // "32768	60999"
    QVERIFY(range.open(QIODevice::ReadOnly));
    const int first = range.readAll().simplified().split(' ').first().toInt();
    QVERIFY2(freePort() < first, qPrintable(QString::number(first)));
}

void TestFreePort::portsInUseArePassedOver()
{
    quint16 taken = freePort();
    QTcpServer server;
    while (!server.listen(QHostAddress::LocalHost, ++taken)) {
    }
    for (int i = 0; i < 10; ++i)
        QVERIFY(freePort() != taken);
}

// A mark of another process looks the same as one that the test itself makes.
void TestFreePort::portsOfAnotherTestArePassedOver()
{
    quint16 taken = freePort();
    QUdpSocket mark;
    while (!mark.bind(QHostAddress::LocalHost, ++taken, QUdpSocket::DontShareAddress)) {
    }
    for (int i = 0; i < 10; ++i)
        QVERIFY(freePort() != taken);
}

QTEST_GUILESS_MAIN(TestFreePort)
#include "test_free_port.moc"
