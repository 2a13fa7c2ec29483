#include "tests/link/line.h"

#include "tests/support/patience.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QtTest>

Line::Line()
{
    QObject::connect(
        &thread, &CTlgThread::signalOnState, &thread,
        [this] {
            const QString text = thread.stateText.mGet();
            const QMutexLocker lock(&m_mutex);
            m_states << text;
        },
        Qt::DirectConnection);
}

Line::~Line()
{
    thread.stopThread();
    if (m_runner)
        m_runnerEnd->join();
    m_threadEnd.join();
}

void Line::once(LinkFunction function)
{
    if (m_runner)
        m_runnerEnd->join();
    thread.stopRequested = false;
    thread.restartRequested = false;
    m_runner.reset(QThread::create([this, function] { (thread.*function)(); }));
    m_runnerEnd = std::make_unique<ThreadEnd>(*m_runner);
    m_runner->start();
}

void Line::connectOnce(quint16 port)
{
    thread.setTcp(QStringLiteral("127.0.0.1"), port, false);
    once(&CTlgThread::TcpIPThread);
}

void Line::listenOnce(quint16 port, const char *admitted)
{
    thread.setTcp(QString::fromLatin1(admitted), port, true);
    once(&CTlgThread::TcpIPSrvThread);
}

bool Line::second()
{
    thread.slotOnSec();
    return comesTrue([this] { return !thread.secondTick || ended(); });
}

QStringList Line::states() const
{
    const QMutexLocker lock(&m_mutex);
    return m_states;
}

Peer::Peer(QTcpSocket *given) : socket(given)
{
    gather();
}

Peer::Peer(quint16 port, const char *from) : socket(new QTcpSocket)
{
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->bind(QHostAddress(QString::fromLatin1(from)));
    gather();
    socket->connectToHost(QHostAddress(QStringLiteral("127.0.0.1")), port);
}

void Peer::gather()
{
    if (open())
        got += socket->readAll();
    QObject::connect(socket.get(), &QTcpSocket::readyRead, socket.get(),
                     [this] { got += socket->readAll(); });
}

void Peer::send(const QByteArray &bytes)
{
    if (!comesTrue([this] { return open(); }))
        qWarning("the link is not there to be sent to");
    socket->write(bytes);
    socket->flush();
}
