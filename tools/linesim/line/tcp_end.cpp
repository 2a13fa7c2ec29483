#include "tools/linesim/line/tcp_end.h"

#include "tools/linesim/console/event_log.h"

#include <QNetworkProxy>
#include <QTcpSocket>

TcpEnd::TcpEnd(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log)
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(settings.retryMs);
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_retry, &QTimer::timeout, this, &TcpEnd::call);
    connect(&m_server, &QTcpServer::newConnection, this, &TcpEnd::accept);
}

TcpEnd::~TcpEnd()
{
    if (m_socket)
        m_socket->disconnect(this);
}

bool TcpEnd::start()
{
    if (!m_settings.listens) {
        call();
        return true;
    }
    if (!m_server.listen(QHostAddress(m_settings.host), m_settings.port)) {
        m_log.event(QStringLiteral("error"), m_server.errorString());
        return false;
    }
    m_log.event(QStringLiteral("listening"), QString::number(m_server.serverPort()));
    return true;
}

void TcpEnd::call()
{
    auto *socket = new QTcpSocket(this);
    socket->setProxy(QNetworkProxy::NoProxy);
    if (!m_settings.from.isEmpty())
        socket->bind(QHostAddress(m_settings.from));
    use(socket);
    connect(socket, &QTcpSocket::connected, this, &TcpEnd::onConnected);
    connect(socket, &QTcpSocket::errorOccurred, this, [this, socket] {
        if (m_socket == socket && socket->state() != QTcpSocket::ConnectedState)
            onLost(socket->errorString());
    });
    socket->connectToHost(QHostAddress(m_settings.host), m_settings.port);
}

void TcpEnd::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_socket) {
            m_log.event(QStringLiteral("refused"), QStringLiteral("a second connection"));
            socket->abort();
            socket->deleteLater();
            continue;
        }
        use(socket);
        onConnected();
    }
}

void TcpEnd::use(QTcpSocket *socket)
{
    m_socket = socket;
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { emit received(socket->readAll()); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        if (m_socket == socket)
            onLost(QStringLiteral("connection closed"));
    });
}

void TcpEnd::onConnected()
{
    m_wasConnected = true;
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_log.event(QStringLiteral("connected"),
                QStringLiteral("%1:%2").arg(m_socket->peerAddress().toString()).arg(m_socket->peerPort()));
    emit connected();
}

void TcpEnd::onLost(const QString &reason)
{
    m_socket->disconnect(this);
    m_socket->deleteLater();
    m_socket = nullptr;
    m_log.event(QStringLiteral("closed"), reason);
    emit disconnected();
    const bool wasConnected = std::exchange(m_wasConnected, false);
    if (!m_settings.listens && (m_settings.callsAgain || !wasConnected))
        m_retry.start();
}

void TcpEnd::write(const QByteArray &bytes)
{
    if (m_socket)
        m_socket->write(bytes);
}

void TcpEnd::close()
{
    if (m_socket)
        m_socket->disconnectFromHost();
}

void TcpEnd::drop()
{
    if (!m_socket)
        return;
    QTcpSocket *socket = m_socket;
    socket->disconnect(this);
    socket->abort();
    onLost(QStringLiteral("dropped"));
}
