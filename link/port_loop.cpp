#include "link/port_loop.h"

#include "app/journal_words.h"
#include "link/adapter_protocol.h"
#include "link/adapter_stream.h"
#include "link/tlg_thread.h"

#include <QElapsedTimer>
#include <QMutexLocker>
#include <QSerialPort>

#include <cerrno>

using namespace AdapterProtocol;

namespace
{
constexpr int StepMs = 100;
constexpr int VersionPasses = 20;
constexpr int ReadMs = 10;
constexpr int SilenceLimit = 31;          // seconds
constexpr int SilentAtStartPause = 30;    // seconds to the next attempt
constexpr int SilentPause = 5;            // likewise
constexpr int UntakenLimit = 1024 * 1024; // characters in recvBuffer that stop the reading
const QString SilentText = QStringLiteral(": Адаптер не отвечает");
} // namespace

PortWaits CPortLoop::waits;

CPortLoop::CPortLoop(CTlgThread &thread, QSerialPort &port, const QString &prefix, const QString &portName)
    : m_thread(thread), m_port(port), m_prefix(prefix), m_portName(portName),
      m_modeByte(CAdapterStream::modeByte(thread.tlgBaud))
{
}

void CPortLoop::run()
{
    if (!greet())
        return;
    int version = 0;
    if (m_thread.needVersion && running()) { // one that ends before it could ask leaves that to the next
        m_thread.needVersion = false;
        version = askVersion();
    }
    m_thread.lineError = CTlgThread::LineGood;
    emit m_thread.signalOnState();
    m_thread.statusPending = false;
    loop(version);
}

/// Waits for the adapter to talk, and tells it the line mode. False if it is silent or the link is to end.
bool CPortLoop::greet()
{
    if (!waitForFirstByte()) {
        if (running())
            lost(m_prefix + SilentText, SilentAtStartPause);
        else
            leave();
        return false;
    }
    (void)m_port.readAll();
    m_thread.connected = true;
    m_thread.reportFailure = true;
    write(QByteArray(1, m_modeByte));
    m_thread.setState(m_prefix + JournalWords::LinkUp + m_portName);
    drainFor(waits.settleMs);
    return true;
}

bool CPortLoop::waitForFirstByte()
{
    QElapsedTimer timer;
    timer.start();
    while (running() && timer.elapsed() < waits.firstByteMs)
        if (m_port.waitForReadyRead(StepMs))
            return true;
        else if (m_port.error() != QSerialPort::TimeoutError)
            QThread::msleep(StepMs);
    return false;
}

void CPortLoop::drainFor(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (running() && timer.elapsed() < milliseconds) {
        if (!m_port.waitForReadyRead(StepMs) && m_port.error() != QSerialPort::TimeoutError)
            QThread::msleep(StepMs);
        (void)m_port.readAll();
    }
}

/// The firmware version; 0 if the adapter does not tell. A pass with data does not count, but neither a busy
/// adapter that does not answer nor codes from the line may hold the link up.
int CPortLoop::askVersion()
{
    write(QByteArray(1, AskVersion));
    QElapsedTimer timer;
    timer.start();
    QByteArray reply;
    for (int pass = 0; pass < VersionPasses && timer.elapsed() < waits.versionMs && running();) {
        if (!m_port.waitForReadyRead(waits.versionStepMs)) {
            QThread::msleep(static_cast<unsigned long>(waits.versionStepMs));
            ++pass;
            continue;
        }
        reply = CAdapterStream::codesIn(reply + m_port.readAll());
        if (reply.size() > CAdapterStream::VersionCodes)
            return 0;
        const int version = CAdapterStream::versionFrom(reply);
        if (version < 0)
            continue;
        m_thread.setState(m_prefix + QStringLiteral(": ") + m_portName + JournalWords::LinkVersion +
                          QStringLiteral("%1)").arg(version));
        return version;
    }
    return 0;
}

bool CPortLoop::running() const
{
    return !m_thread.restartRequested && !m_thread.stopRequested;
}

void CPortLoop::loop(int version)
{
    CAdapterStream stream(m_thread, m_prefix, version);
    while (running()) {
        m_thread.reportEvents();
        if (m_thread.secondTick)
            secondPassed();
        if (!read(stream))
            return m_thread.reportEvents();
        if (m_thread.statusPending) {
            write(QByteArray(1, m_modeByte)); // the program's sign of life
            m_thread.statusPending = false;
        }
        if (m_port.bytesToWrite() < UnsentBytesLimit)
            stream.send([this](const QByteArray &bytes) { return write(bytes); });
    }
    m_thread.reportEvents();
    leave();
}

void CPortLoop::secondPassed()
{
    m_thread.secondTick = false;
    ++m_silentSeconds;
    if (m_thread.protectedMode)
        m_thread.protectedSeconds.add(1);
}

// Reading stops while the program does not take what has come, so that memory stays bounded.
bool CPortLoop::heldBack() const
{
    const QMutexLocker lock(&m_thread.recvBuffer.mutex);
    return m_thread.recvBuffer.text.size() > UntakenLimit;
}

/// False if the connection is lost.
bool CPortLoop::read(CAdapterStream &stream)
{
    if (heldBack()) {
        QThread::msleep(ReadMs);
        return true;
    }
    m_port.clearError();
    errno = EIO; // what the port takes for its error when it ends under the read, as an unplugged one does
    if (m_port.waitForReadyRead(ReadMs) || m_port.bytesAvailable() > 0) {
        stream.take(m_port.readAll());
        m_silentSeconds = 0;
        return true;
    }
    if (m_port.error() == QSerialPort::TimeoutError) {
        // The wait was rest enough: a sleep on top of it would wake the processor twice as often.
        if (m_silentSeconds < SilenceLimit)
            return true;
        lost(m_prefix + SilentText, SilentPause);
        return false;
    }
    if (m_port.error() == QSerialPort::NoError)
        return true;
    lost(m_prefix + QLatin1Char(':') + m_port.errorString(), 0);
    return false;
}

bool CPortLoop::write(const QByteArray &bytes)
{
    const bool taken = m_port.write(bytes) == bytes.size();
    m_port.flush();
    return taken;
}

void CPortLoop::lost(const QString &text, int delay)
{
    m_port.close();
    m_thread.connected = false;
    m_thread.setState(text);
    m_thread.reconnectDelay = delay;
}

/// The close by request. No pause is set, so a restarted link comes up again at once.
void CPortLoop::leave()
{
    if (m_port.isOpen()) {
        write(QByteArray(1, Closing));
        QThread::msleep(StepMs);
        m_port.close();
    }
    m_thread.connected = false;
    if (!m_thread.stopRequested)
        m_thread.setState(m_prefix + QStringLiteral(": Порт закрыт"));
}
