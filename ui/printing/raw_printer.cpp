#include "ui/printing/raw_printer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTcpSocket>

namespace
{
constexpr int ConnectMs = 3000;
constexpr int WriteMs = 30000;
constexpr int WriteStepMs = 100;
constexpr int CloseMs = 1000;

QString writeError(const QString &printer)
{
    return QStringLiteral("Error write to printer ") + printer;
}

QStringList printToFile(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return {QStringLiteral("Error open printer ") + name};
    if (file.write(bytes) != bytes.size() || !file.flush())
        return {writeError(name)};
    return {};
}

/// False if the far end does not take all bytes in time or breaks off.
bool writeToSocket(QTcpSocket &socket, const QByteArray &bytes, const std::atomic<bool> &stop)
{
    const QDeadlineTimer deadline(WriteMs);
    socket.write(bytes);
    while (socket.bytesToWrite() > 0 && socket.state() == QTcpSocket::ConnectedState &&
           !deadline.hasExpired() && !stop)
        socket.waitForBytesWritten(WriteStepMs);
    return socket.bytesToWrite() == 0 && socket.state() == QTcpSocket::ConnectedState;
}

QStringList printToHost(const RawPrinterTarget &target, const QByteArray &bytes,
                        const std::atomic<bool> &stop)
{
    const QString address = target.name + QLatin1Char(':') + QString::number(target.port);
    QTcpSocket socket;
    socket.connectToHost(target.name, target.port);
    if (!socket.waitForConnected(ConnectMs))
        return {QStringLiteral("Error connect to printer ") + address, socket.errorString()};
    if (!writeToSocket(socket, bytes, stop)) {
        socket.abort();
        return {writeError(address)};
    }
    socket.disconnectFromHost();
    if (socket.state() != QTcpSocket::UnconnectedState)
        socket.waitForDisconnected(CloseMs);
    return {};
}
} // namespace

RawPrinterTarget RawPrinterTarget::read(const QString &printerRaw)
{
    RawPrinterTarget target;
    target.name = printerRaw;
    if (!printerRaw.startsWith(QLatin1String("IP:"), Qt::CaseInsensitive))
        return target;
    const QString address = printerRaw.mid(3);
    target.network = true;
    target.name = address.section(QLatin1Char(':'), 0, 0).trimmed();
    target.port = address.section(QLatin1Char(':'), 1).toUShort();
    if (target.port == 0)
        target.port = DefaultPort;
    return target;
}

QStringList printRaw(const RawPrinterTarget &target, const QByteArray &bytes, const std::atomic<bool> &stop)
{
    return target.network ? printToHost(target, bytes, stop) : printToFile(target.name, bytes);
}
