#include "link/tcp_loop.h"

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_protocol.h"
#include "link/tlg_thread.h"

#include <QTcpSocket>

#include <algorithm>
#include <ctime>

using namespace TcpProtocol;

CTcpLoop::CTcpLoop(CTlgThread &thread, QTcpSocket &socket, const QString &prefix, Role role)
    : stream(thread), m_thread(thread), m_socket(socket), m_delivery(thread, socket), m_prefix(prefix),
      m_role(role)
{
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket.setReadBufferSize(ReadSlice);
}

QByteArray CTcpLoop::agreedKey() const
{
    const QByteArray key = QByteArray::fromHex(m_thread.channelKey().toLatin1());
    return Options.processMode == CKS && key.size() >= ShortestKey ? key : QByteArray();
}

void CTcpLoop::agreeKey()
{
    const QByteArray key = agreedKey();
    if (key.isEmpty())
        return;
    const auto ownSeed = static_cast<unsigned char>(std::clock() & 0xFF);
    write(QByteArray(1, static_cast<char>(ownSeed)));
    if (m_socket.bytesAvailable() == 0)
        m_socket.waitForReadyRead(SeedMs);
    char peerSeed = 0;
    if (!m_socket.getChar(&peerSeed))
        return;
    StreamCrypt.setKey(static_cast<unsigned char>(std::min(key.size(), 255)),
                       reinterpret_cast<const unsigned char *>(key.constData()));
    StreamCrypt.init_crypt(ownSeed);
    StreamCrypt.init_decrypt(static_cast<unsigned char>(peerSeed));
    stream.ciphered = true;
}

void CTcpLoop::takeRest()
{
    const QByteArray rest = m_socket.readAll();
    if (!rest.isEmpty() && agreedKey().isEmpty())
        (void)stream.take(rest); // nobody is there for an answer
    m_thread.reportEvents();
}

void CTcpLoop::run()
{
    while (running() && pass()) {
    }
    m_thread.reportEvents();
}

bool CTcpLoop::running() const
{
    return !m_thread.restartRequested && !m_thread.stopRequested &&
           m_socket.state() == QAbstractSocket::ConnectedState;
}

bool CTcpLoop::pass()
{
    m_thread.reportEvents();
    if (m_thread.secondTick && !secondPassed())
        return false;
    receive();
    return send();
}

bool CTcpLoop::secondPassed()
{
    if (m_thread.synCountdown > 0) {
        if (--m_thread.synCountdown == 0) {
            m_thread.setState(m_prefix + QStringLiteral(": Таймаут SYN %1сек").arg(m_thread.silenceLimit()));
            return false;
        }
        if (m_role == Server)
            write(QByteArray(1, WindowAnswer)); // a silent client is polled
    }
    m_thread.secondTick = false;
    if (m_thread.protectedMode)
        m_thread.protectedSeconds.add(1);
    return m_delivery.secondPassed() || sendingFailed();
}

// Reading stops while the program does not take what has come, or the peer not what it is answered. TCP then
// holds the peer back, and memory stays bounded.
bool CTcpLoop::heldBack() const
{
    const QMutexLocker lock(&m_thread.recvBuffer.mutex);
    return m_thread.recvBuffer.text.size() > UntakenLimit || m_socket.bytesToWrite() > UnreadAnswers;
}

void CTcpLoop::receive()
{
    if (heldBack()) {
        m_socket.flush();
        QThread::msleep(ReadMs);
        return;
    }
    if (m_socket.bytesAvailable() == 0) // a full buffer would make the wait a busy one
        m_socket.waitForReadyRead(ReadMs);
    if (m_socket.bytesAvailable() == 0) {
        QThread::usleep(10);
        return;
    }
    write(stream.take(m_socket.readAll()));
}

// Nothing is taken off the peer's window while the chunk before is on its way.
bool CTcpLoop::send()
{
    m_delivery.update();
    if (m_thread.sendBuffer.mIsEmpty())
        return true;
    if (m_delivery.onItsWay() && m_socket.state() != QAbstractSocket::ConnectedState)
        return sendingFailed();
    if (!m_delivery.ready())
        return true;
    const LineChunk chunk = stream.nextChunk();
    if (chunk.text.isEmpty())
        return true;
    if (!write(stream.encoded(chunk)))
        return sendingFailed();
    m_delivery.sent(chunk.text);
    return true;
}

bool CTcpLoop::sendingFailed()
{
    m_thread.connected = false;
    m_thread.setState(m_prefix + QStringLiteral(": Ошибка отправки данных"));
    return false;
}

bool CTcpLoop::write(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return true;
    const bool taken = m_socket.write(bytes) == bytes.size();
    m_delivery.wrote(bytes.size());
    m_socket.flush();
    return taken && m_socket.state() == QAbstractSocket::ConnectedState;
}
