#include "tests/support/free_port.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QUdpSocket>

#include <memory>

namespace
{
// Below those that the system hands out by itself.
constexpr int FirstPort = 20000;
constexpr int PortCount = 10000;
constexpr int PortsPerProcess = 16; // between the places where two processes in turn begin to look

// The UDP port of the same number is the mark that a test has the TCP port: the system gives it to one
// process only and takes it back when that process ends, however it ends.
bool reserve(quint16 port)
{
    auto mark = std::make_unique<QUdpSocket>();
    if (!mark->bind(QHostAddress::LocalHost, port, QUdpSocket::DontShareAddress))
        return false;
    QTcpServer probe;
    if (!probe.listen(QHostAddress::Any, port))
        return false;
    mark.release()->setParent(QCoreApplication::instance());
    return true;
}
} // namespace

quint16 freePort()
{
    const qint64 begin = QCoreApplication::applicationPid() * PortsPerProcess;
    for (int i = 0; i < PortCount; ++i) {
        const auto port = quint16(FirstPort + (begin + i) % PortCount);
        if (reserve(port))
            return port;
    }
    qFatal("no free port");
}
