#pragma once

#include "tools/linesim/event_log.h"
#include "tools/linesim/far_end_options.h"
#include "tools/linesim/scenario.h"
#include "tools/linesim/switched_line.h"
#include "tools/linesim/telegram_store.h"

#include <QObject>
#include <QTimer>

#include <optional>

/// How "linesim switch" is to behave.
struct ChannelSwitchOptions : FarEndOptions {
    SwitchedLine::Settings line;
    QString terminalAnswerback; ///< the text of the terminal's own answerback
    QString channelName;        ///< told on each connection of the link; empty tells nothing
    QString storeDirectory;     ///< what the terminal says, see TelegramStore; empty keeps nothing
    QString scenario;           ///< a file of timed commands; empty is none
};
/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<ChannelSwitchOptions> readChannelSwitchOptions(const QStringList &arguments);

/// A switched-channel network: an exchange (SwitchedLine) with its subscribers at the far end of the link.
class ChannelSwitch : public QObject
{
    Q_OBJECT

public:
    ChannelSwitch(const ChannelSwitchOptions &options, EventLog &log);

    [[nodiscard]] bool start(); ///< false if it cannot listen
    /// Runs one command; an unknown one is the event "error".
    void run(const QString &command);
    [[nodiscard]] quint16 listeningPort() const { return m_tcp.listeningPort(); }

signals:
    void quit();

private:
    using Action = void (ChannelSwitch::*)(const QString &argument);
    struct Command {
        const char *name;
        Action action;
    };
    static const Command commands[];

    void takeConnection();
    void takeText(const QString &text);
    void tick();
    void perform(Deed::What what);

    void doCall(const QString &numberAndHabits);
    void doHangUp(const QString &);
    void doAsk(const QString &);
    void doAnswerback(const QString &);
    void doTelegram(const QString &);
    void doCheck(const QString &);
    void doCrypt(const QString &);
    void doSay(const QString &text);
    void doPoint(const QString &name);
    void doWindows(const QString &onOff);
    void doDrop(const QString &);
    void doFigures(const QString &);
    void doQuit(const QString &);

    ChannelSwitchOptions m_options;
    EventLog &m_log;
    TcpEnd m_tcp;
    LinkEnd m_link;
    SwitchedLine m_line;
    SwitchReader m_reader;
    TelegramStore m_store;
    Scenario m_scenario;
    QTimer m_timer;
    qint64 m_lastText = 0; // ms since the epoch
    bool m_told = false;   // the channel's name, on this connection of the link
};

/// The subcommand "switch"; see runSubcommand().
[[nodiscard]] int runChannelSwitch(const QStringList &arguments);
