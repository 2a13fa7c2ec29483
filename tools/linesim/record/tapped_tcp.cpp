#include "tools/linesim/record/tapped_tcp.h"

#include "tools/linesim/console/event_log.h"

#include <QNetworkProxy>
#include <QTcpSocket>

TappedTcp::TappedTcp(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log)
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_server, &QTcpServer::newConnection, this, &TappedTcp::accept);
}

TappedTcp::~TappedTcp()
{
    for (QTcpSocket *socket : {m_caller, m_called})
        if (socket)
            socket->disconnect(this);
}

bool TappedTcp::start()
{
    if (!m_server.listen(QHostAddress(m_settings.address), m_settings.port)) {
        m_log.event(QStringLiteral("error"), m_server.errorString());
        return false;
    }
    m_log.event(QStringLiteral("listening"), QString::number(m_server.serverPort()));
    return true;
}

void TappedTcp::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_caller) {
            m_log.event(QStringLiteral("refused"), QStringLiteral("a second connection"));
            socket->abort();
            socket->deleteLater();
            continue;
        }
        m_caller = socket;
        call();
    }
}

void TappedTcp::call()
{
    m_called = new QTcpSocket(this);
    m_called->setProxy(QNetworkProxy::NoProxy);
    if (!m_settings.from.isEmpty())
        m_called->bind(QHostAddress(m_settings.from));
    for (QTcpSocket *socket : {m_caller, m_called}) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { pass(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { lose(socket); });
    }
    connect(m_called, &QTcpSocket::connected, this, &TappedTcp::flush);
    connect(m_called, &QTcpSocket::errorOccurred, this, [this] {
        if (m_called && m_called->state() != QTcpSocket::ConnectedState)
            lose(m_called);
    });
    ++m_connection;
    m_log.event(QStringLiteral("connected"), QString::number(m_connection));
    emit opened(m_connection, sideOf(m_caller));
    m_called->connectToHost(QHostAddress(m_settings.host), m_settings.hostPort);
}

/// On first, recorded then: the record must not hold up the line.
void TappedTcp::pass(QTcpSocket *from)
{
    const QByteArray bytes = untilCut(from->readAll());
    if (bytes.isEmpty())
        return;
    QTcpSocket *to = from == m_caller ? m_called : m_caller;
    if (to->state() == QTcpSocket::ConnectedState) {
        to->write(bytes);
        to->flush();
    } else {
        m_early += bytes;
    }
    emit passed(m_connection, sideOf(from), bytes);
}

void TappedTcp::flush()
{
    m_called->setSocketOption(QAbstractSocket::LowDelayOption, 1); // heeded once there is a connection
    m_called->write(std::exchange(m_early, QByteArray()));
}

/// The last words of the end that has gone still reach the other.
void TappedTcp::lose(QTcpSocket *socket)
{
    pass(socket);
    QTcpSocket *other = socket == m_caller ? m_called : m_caller;
    for (QTcpSocket *end : {socket, other}) {
        end->disconnect(this);
        connect(end, &QTcpSocket::disconnected, end, &QObject::deleteLater);
    }
    socket->deleteLater();
    if (other->state() == QTcpSocket::ConnectedState)
        other->disconnectFromHost();
    else
        other->deleteLater();
    const LineRecord::Side by = sideOf(socket);
    m_caller = m_called = nullptr;
    m_early.clear();
    m_log.event(QStringLiteral("closed"), QString::number(m_connection));
    emit closed(m_connection, by);
}

void TappedTcp::cut()
{
    if (!m_caller)
        return;
    const LineRecord::Side by = LineRecord::FarEnd;
    for (QTcpSocket *end : {m_caller, m_called}) {
        end->disconnect(this);
        end->abort();
        end->deleteLater();
    }
    m_caller = m_called = nullptr;
    m_early.clear();
    m_log.event(QStringLiteral("closed"), QStringLiteral("%1, cut").arg(m_connection));
    emit closed(m_connection, by);
}

LineRecord::Side TappedTcp::sideOf(const QTcpSocket *socket) const
{
    return (socket == m_caller) == m_settings.workstationListens ? LineRecord::FarEnd
                                                                 : LineRecord::Workstation;
}
