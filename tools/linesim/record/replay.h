#pragma once

#include "tools/linesim/console/commanded.h"
#include "tools/linesim/line/tcp_end.h"
#include "tools/linesim/record/record_player.h"
#include "tools/linesim/serial/device_port.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

/// How "linesim replay" is to behave.
struct ReplayOptions {
    LineRecord record;
    RecordPlayer::Settings player;
    TcpEnd::Settings tcp;
    bool onPort = false;                         ///< a serial port instead of TCP
    QString serial = QStringLiteral("10000001"); ///< printed for VELDA_PORTS
    QString port; ///< path of the serial port; empty takes what the system gives
};

/// Plays the far end of a line record to a workstation, over TCP or as an adapter on a serial port. The
/// events: "listening" or "port", "connected", "closed", and at the end "same" or, as a breach, "differs".
class Replay : public Commanded
{
    Q_OBJECT

public:
    Replay(const ReplayOptions &options, EventLog &log);

    [[nodiscard]] bool start(); ///< false, with an event, if there is no line to be had

private:
    [[nodiscard]] bool runOwn(const QString &, const QString &) override { return false; }
    void useTcp(const ReplayOptions &options);
    void usePort(const ReplayOptions &options);
    void pullOut();
    void tell(const QString &difference);

    RecordPlayer m_player;
    bool m_listens;
    std::unique_ptr<TcpEnd> m_tcp; // one of these two
    std::unique_ptr<DevicePort> m_port;
    QTimer m_timer;
    QElapsedTimer m_clock;
};

/// Reads \a arguments, the first being the subcommand's name, and the record that they name. Empty, with the
/// reason on standard error, if they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<ReplayOptions> readReplayOptions(const QStringList &arguments);
/// The subcommand "replay"; see runSubcommand().
[[nodiscard]] int runReplay(const QStringList &arguments);
