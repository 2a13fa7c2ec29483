#include "ui/raw_printer.h"

#include "records/protocol.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTcpSocket>

namespace
{
constexpr int ConnectMs = 3000;
constexpr int WriteMs = 30000;
constexpr int WriteStepMs = 100;
constexpr int CloseMs = 1000;
constexpr int QuickMs = 500; // the main thread waits no longer for a printer
constexpr int EndMs = 5000;  // what open jobs get at the program's end

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

CRawPrinter &CRawPrinter::instance()
{
    static CRawPrinter *const printer = [] {
        auto *made = new CRawPrinter;
        connect(qApp, &QCoreApplication::aboutToQuit, made, &CRawPrinter::endJobs);
        return made;
    }();
    return *printer;
}

void CRawPrinter::print(const RawPrinterTarget &target, const QByteArray &bytes)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_jobs.enqueue({target, bytes});
        if (m_busy)
            return;
        m_busy = true;
    }
    wait(); // the last run may be about to return
    start();
    waitForIdle(QuickMs);
}

bool CRawPrinter::waitForIdle(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    bool idle = false;
    {
        const QMutexLocker lock(&m_mutex);
        while (m_busy && m_idle.wait(&m_mutex, deadline)) {
        }
        idle = !m_busy;
    }
    journalErrors();
    return idle;
}

void CRawPrinter::endJobs()
{
    if (waitForIdle(EndMs))
        return;
    Log.addCacheServiceString(QStringLiteral("Печать прервана"), ProtocolError, true);
    m_stop = true;
    waitForIdle(CloseMs);
}

void CRawPrinter::journalErrors()
{
    QStringList errors;
    {
        const QMutexLocker lock(&m_mutex);
        errors.swap(m_errors);
    }
    for (const QString &error : qAsConst(errors))
        Log.addCacheServiceString(error, ProtocolError, true);
}

bool CRawPrinter::takeJob(Job &job)
{
    const QMutexLocker lock(&m_mutex);
    if (!m_jobs.isEmpty() && !m_stop) {
        job = m_jobs.dequeue();
        return true;
    }
    m_busy = false;
    m_idle.wakeAll();
    return false;
}

void CRawPrinter::run()
{
    Job job;
    while (takeJob(job)) {
        const QStringList errors = printJob(job);
        if (errors.isEmpty())
            continue;
        const QMutexLocker lock(&m_mutex);
        m_errors += errors;
        QMetaObject::invokeMethod(this, &CRawPrinter::journalErrors, Qt::QueuedConnection);
    }
}

QStringList CRawPrinter::printJob(const Job &job) const
{
    return job.target.network ? printToHost(job) : printToFile(job.target.name, job.bytes);
}

QStringList CRawPrinter::printToHost(const Job &job) const
{
    const QString address = job.target.name + QLatin1Char(':') + QString::number(job.target.port);
    QTcpSocket socket;
    socket.connectToHost(job.target.name, job.target.port);
    if (!socket.waitForConnected(ConnectMs))
        return {QStringLiteral("Error connect to printer ") + address, socket.errorString()};
    socket.write(job.bytes);
    const QDeadlineTimer deadline(WriteMs);
    while (socket.bytesToWrite() > 0 && socket.state() == QTcpSocket::ConnectedState &&
           !deadline.hasExpired() && !m_stop)
        socket.waitForBytesWritten(WriteStepMs);
    if (socket.bytesToWrite() > 0 || socket.state() != QTcpSocket::ConnectedState) {
        socket.abort();
        return {writeError(address)};
    }
    socket.disconnectFromHost();
    if (socket.state() != QTcpSocket::UnconnectedState)
        socket.waitForDisconnected(CloseMs);
    return {};
}
