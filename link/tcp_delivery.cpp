#include "link/tcp_delivery.h"

#include "link/tcp_protocol.h"
#include "link/tlg_thread.h"

#include <QTcpSocket>

using namespace TcpProtocol;

CTcpDelivery::CTcpDelivery(CTlgThread &thread, QTcpSocket &socket)
    : m_thread(thread), m_socket(socket),
      m_machine(std::make_unique<CPeerMachine>(socket.socketDescriptor(), thread.silenceLimit()))
{
}

void CTcpDelivery::wrote(int bytes)
{
    m_after += bytes;
}

void CTcpDelivery::sent(const QString &chunk)
{
    m_chunk = chunk;
    m_after = 0;
    m_silentSeconds = 0;
    m_machine->beginWaiting();
}

// A socket that has lost its connection forgets what it had not passed on; that never arrives.
qint64 CTcpDelivery::waiting()
{
    if (m_socket.state() == QAbstractSocket::ConnectedState)
        m_unpassed = m_socket.bytesToWrite();
    return m_unpassed + m_machine->unacknowledged();
}

void CTcpDelivery::update()
{
    if (!onItsWay() || waiting() > m_after)
        return;
    m_thread.chunkSent(m_chunk);
    m_chunk.clear();
}

bool CTcpDelivery::ready()
{
    return !onItsWay() && waiting() < UnsentBytesLimit && m_machine->hasRoom();
}

bool CTcpDelivery::secondPassed()
{
    m_silentSeconds = !onItsWay() || m_machine->answers() ? 0 : m_silentSeconds + 1;
    const int limit = m_thread.silenceLimit();
    return limit == 0 || m_silentSeconds <= limit; // the first of them began before the chunk
}

void CTcpDelivery::finish()
{
    update();
    if (onItsWay())
        m_machine->giveUp();
    m_machine.reset();
    m_thread.reportEvents();
}
