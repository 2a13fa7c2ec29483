#pragma once

#include "tools/linesim/event_log.h"
#include "tools/linesim/peer_options.h"
#include "tools/linesim/telegram_store.h"

#include <QObject>
#include <QTimer>

/// The other end of a direct link: it keeps the link alive, gives windows, sends what it has, keeps and
/// confirms what comes. Commands turn it against the workstation.
class Peer : public QObject
{
    Q_OBJECT

public:
    Peer(const PeerOptions &options, EventLog &log);

    [[nodiscard]] bool start(); ///< false if it cannot listen
    /// Runs one command; an unknown one is the event "error".
    void run(const QString &command);
    [[nodiscard]] quint16 listeningPort() const { return m_tcp.listeningPort(); }

signals:
    void quit();

private:
    using Action = void (Peer::*)(const QString &argument);
    struct Command {
        const char *name;
        Action action;
    };
    static const Command commands[];

    void takeConnection();
    void takeBytes(const QByteArray &bytes);
    void takeText(const QString &text);
    void tick();
    void confirm();

    void doSend(const QString &path);
    void doText(const QString &text);
    void doRaw(const QString &hex);
    void doGrant(const QString &characters);
    void doWindows(const QString &onOff);
    void doFlow(const QString &characters);
    void doKeepAlive(const QString &);
    void doSilence(const QString &);
    void doSpeak(const QString &);
    void doConfirm(const QString &);
    void doClose(const QString &);
    void doDrop(const QString &);
    void doFlood(const QString &characters);
    void doNoise(const QString &countAndSeed);
    void doHalfCommand(const QString &);
    void doQuit(const QString &);

    PeerOptions m_options;
    EventLog &m_log;
    TcpEnd m_tcp;
    LinkEnd m_link;
    TelegramFeed m_feed;
    TelegramStore m_store;
    QTimer m_timer;
};

/// The subcommand "peer"; see runSubcommand().
[[nodiscard]] int runPeer(const QStringList &arguments);
