#pragma once

#include "tools/linesim/record/tapped_line.h"

#include <QHostAddress>
#include <QTcpServer>

class EventLog;
class QTcpSocket;

/// A tap between two ends over TCP: it waits for the one that calls, and calls the one that waits. Each
/// caller gets a connection of its own, one at a time; a second is refused, as a workstation refuses it. If
/// the end that waits is not to be reached, the caller is let go at once.
class TappedTcp : public TappedLine
{
    Q_OBJECT

public:
    struct Settings {
        QString address = QStringLiteral("127.0.0.1"); ///< to wait on; numeric, as the others
        quint16 port = 0;                              ///< 0 takes any, which the log tells
        QString host;                                  ///< of the end that waits
        quint16 hostPort = 0;
        QString from;                    ///< the own address for the call; empty takes any
        bool workstationListens = false; ///< so it is the far end that calls
    };

    TappedTcp(const Settings &settings, EventLog &log);
    ~TappedTcp() override;

    [[nodiscard]] bool start() override;
    void cut() override;
    [[nodiscard]] quint16 listeningPort() const { return m_server.serverPort(); }

private:
    void accept();
    void call();
    void pass(QTcpSocket *from);
    void flush();
    void lose(QTcpSocket *socket);
    [[nodiscard]] LineRecord::Side sideOf(const QTcpSocket *socket) const;

    Settings m_settings;
    EventLog &m_log;
    QTcpServer m_server;
    QTcpSocket *m_caller = nullptr; // both or none
    QTcpSocket *m_called = nullptr;
    QByteArray m_early; // from the caller, before the other end has answered
    int m_connection = 0;
};
