#pragma once

#include <QHostAddress>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

class EventLog;
class QTcpSocket;

/// The far end's TCP connection, listening or calling; one connection at a time. A caller calls again after
/// a failure, and mostly after a loss, a listener waits for the next caller.
class TcpEnd : public QObject
{
    Q_OBJECT

public:
    struct Settings {
        bool listens = true;
        QString host = QStringLiteral("127.0.0.1"); ///< to call, or to listen on; numeric
        quint16 port = 0;                           ///< 0 listens on any, which the log tells
        QString from;                               ///< a caller's own address; empty takes any
        int retryMs = 1000;                         ///< from a failure or a loss to the next call
        bool callsAgain = true;                     ///< after a loss; otherwise start() makes each call
    };

    TcpEnd(const Settings &settings, EventLog &log);
    ~TcpEnd() override;

    [[nodiscard]] bool start();          ///< listens or calls; false, with an event, if it cannot listen
    void write(const QByteArray &bytes); ///< nothing without a connection, as the next two
    void close();                        ///< after all that is written has gone
    void drop();                         ///< at once, without a goodbye
    /// The port that it listens on, also where that was 0; 0 for a caller.
    [[nodiscard]] quint16 listeningPort() const { return m_server.serverPort(); }

signals:
    void connected();
    void disconnected();                    ///< by either side
    void received(const QByteArray &bytes); ///< as they came, cut anywhere

private:
    void call();
    void accept();
    void use(QTcpSocket *socket);
    void onConnected();
    void onLost(const QString &reason);

    Settings m_settings;
    EventLog &m_log;
    QTcpServer m_server;
    QTimer m_retry;
    QTcpSocket *m_socket = nullptr;
    bool m_wasConnected = false; // the connection that is being lost had been made
};
