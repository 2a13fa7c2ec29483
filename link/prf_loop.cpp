#include "link/prf_loop.h"

#include "link/perforator_protocol.h"
#include "link/prf_thread.h"
#include "text/mtk2.h"

#include <QMutexLocker>
#include <QSerialPort>

using namespace PerforatorProtocol;

namespace
{
constexpr int ReadMs = 10;
constexpr int UnfetchedLimit = 1024 * 1024; // characters in receivedText; more are dropped
} // namespace

CPrfLoop::CPrfLoop(CPrfThread &thread, QSerialPort &port, int baudIndex)
    : m_thread(thread), m_port(port), m_modeByte(1, char(ModeBase | (baudIndex + 1)))
{
}

void CPrfLoop::run()
{
    write(m_modeByte);
    while (running())
        pass();
    sendCommands(); // so that tape does not run on when the dialog stops it and closes
}

/// What waits to be punched keeps the port open, whoever asked for the end.
bool CPrfLoop::running() const
{
    if (m_thread.stopRequested)
        return false;
    if (!m_thread.restartRequested && !m_thread.paused)
        return true;
    const QMutexLocker lock(&m_thread.sendMutex);
    return !m_thread.sendText.isEmpty();
}

void CPrfLoop::pass()
{
    const QByteArray bytes = read();
    if (!bytes.isEmpty())
        take(bytes);
    sendCommands();
    punchPiece();
}

// An error of the port is not looked into: an adapter that is gone shows by text that stays.
QByteArray CPrfLoop::read()
{
    m_port.clearError();
    if (m_port.waitForReadyRead(ReadMs) || m_port.bytesAvailable() > 0)
        return m_port.readAll();
    if (m_port.error() == QSerialPort::TimeoutError)
        QThread::usleep(10);
    else
        QThread::msleep(ReadMs); // a port that is gone does not wait
    return QByteArray();
}

void CPrfLoop::take(const QByteArray &bytes)
{
    QByteArray codes;
    bool marked = false;
    for (const char byte : bytes) {
        const quint8 kind = quint8(byte) & KindMask;
        if (kind == 0)
            codes += byte;
        else
            marked = true;
        if (kind == StatusKind)
            m_room = quint8(byte) & StatusRoom;
    }
    if (!codes.isEmpty())
        deliver(codes);
    if (marked)
        write(m_modeByte); // the program's sign of life
}

void CPrfLoop::deliver(const QByteArray &codes)
{
    QString text;
    QStringFromMTK2(codes, text, m_receiveRegister);
    {
        const QMutexLocker lock(&m_thread.receiveMutex);
        m_thread.receivedText += text.left(UnfetchedLimit - m_thread.receivedText.size());
    }
    emit m_thread.signalOnReceived();
}

void CPrfLoop::sendCommands()
{
    const QMutexLocker lock(&m_thread.commandMutex);
    if (m_thread.commandBytes.isEmpty())
        return;
    write(m_thread.commandBytes);
    m_thread.commandBytes.clear();
}

void CPrfLoop::punchPiece()
{
    if (m_room <= RoomLimit || m_port.bytesToWrite() >= UnsentBytesLimit)
        return;
    {
        const QMutexLocker lock(&m_thread.sendMutex);
        if (m_thread.sendText.isEmpty())
            return;
        const QString piece = m_thread.sendText.left(PieceLength);
        m_thread.sendText.remove(0, PieceLength);
        QByteArray codes;
        MTK2FromQString(piece, codes, m_sendRegister);
        write(codes);
        m_thread.sentText += piece;
        m_room = qMax(0, m_room - codes.size());
    }
    emit m_thread.signalOnSended();
}

void CPrfLoop::write(const QByteArray &bytes)
{
    m_port.write(bytes);
    m_port.flush();
}
