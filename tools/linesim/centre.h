#pragma once

#include "tools/linesim/centre_desk.h"
#include "tools/linesim/event_log.h"
#include "tools/linesim/far_end_options.h"
#include "tools/linesim/scenario.h"
#include "tools/linesim/telegram_store.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <optional>

/// How "linesim centre" is to behave.
struct CentreOptions : FarEndOptions {
    CentreDesk::Settings desk;
    QString sendDirectory;  ///< telegrams to send while the channel is open; empty sends none by itself
    QString storeDirectory; ///< what comes; empty keeps nothing
    QString scenario;       ///< a file of timed commands; empty is none
    int feedPauseMs = 5000; ///< between two telegrams sent by itself
};
/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<CentreOptions> readCentreOptions(const QStringList &arguments);

/// A message switching centre: a clerk (CentreDesk) at the far end of the link.
class Centre : public QObject
{
    Q_OBJECT

public:
    Centre(const CentreOptions &options, EventLog &log);

    [[nodiscard]] bool start(); ///< false if it cannot listen
    /// Runs one command; an unknown one is the event "error".
    void run(const QString &command);
    [[nodiscard]] quint16 listeningPort() const { return m_tcp.listeningPort(); }

signals:
    void quit();

private:
    using Action = void (Centre::*)(const QString &argument);
    struct Command {
        const char *name;
        Action action;
    };
    static const Command commands[];

    void takeConnection();
    void takeLoss();
    void takeText(const QString &text);
    void takeMessages();
    void sendText(const QString &text);
    void tick();
    void feed();

    void doSend(const QString &text);
    void doSendFile(const QString &path);
    void doCategory(const QString &text);
    void doR(const QString &text);
    void doRaw(const QString &text);
    void doCutNext(const QString &);
    void doCutSending(const QString &);
    void doDrop(const QString &);
    void doSilence(const QString &);
    void doTalk(const QString &);
    void doSpeak(const QString &);
    void doFigures(const QString &);
    void doQuit(const QString &);

    /// A telegram that waits for the channel.
    struct Waiting {
        void (CentreDesk::*send)(const QString &text);
        QString text;
    };

    CentreOptions m_options;
    EventLog &m_log;
    TcpEnd m_tcp;
    LinkEnd m_link;
    CentreDesk m_desk;
    TerminalReader m_reader;
    TelegramStore m_store;
    Scenario m_scenario;
    QVector<Waiting> m_feed;
    QTimer m_timer;
    qint64 m_lastText = 0; // ms since the epoch
    qint64 m_lastFeed = 0;
    bool m_cutNext = false;    // within the next telegram of the terminal
    bool m_cutSending = false; // within the next one to it
    bool m_linkIsNew = false;  // the line is there, the clerk does not know yet
};

/// The subcommand "centre"; see runSubcommand().
[[nodiscard]] int runCentre(const QStringList &arguments);
