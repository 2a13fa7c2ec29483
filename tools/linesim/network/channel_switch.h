#pragma once

#include "tools/linesim/far_end/far_end.h"
#include "tools/linesim/network/switched_line.h"

#include <optional>

/// How "linesim switch" is to behave.
struct ChannelSwitchOptions : FarEndOptions {
    SwitchedLine::Settings line;
    QString terminalAnswerback; ///< the text of the terminal's own answerback
    QString channelName;        ///< told on each connection of the link; empty tells nothing
};
/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<ChannelSwitchOptions>
readChannelSwitchOptions(const QStringList &arguments,
                         const std::optional<AdapterLine::Settings> &adapter = std::nullopt);

/// A switched-channel network: an exchange (SwitchedLine) with its subscribers at the far end of the link.
class ChannelSwitch : public FarEnd
{
    Q_OBJECT

public:
    ChannelSwitch(const ChannelSwitchOptions &options, EventLog &log);

private:
    [[nodiscard]] bool runHere(const QString &name, const QString &argument) override;
    void takeConnection() override;
    void takeLoss() override;
    void takeText(const QString &text) override;
    void tick(const QDateTime &now) override;
    void sayFigures() override;
    void perform(Deed::What what);

    void callTerminal(const QString &numberAndHabits);
    void tellChannel(const QString &name);

    QString m_channelName;
    bool m_stores;
    SwitchedLine m_exchange;
    SwitchReader m_reader;
    qint64 m_lastText = 0; // ms since the epoch
    bool m_told = false;   // the channel's name, on this connection of the link
};

/// The subcommand "switch"; see runSubcommand().
[[nodiscard]] int runChannelSwitch(const QStringList &arguments,
                                   const std::optional<AdapterLine::Settings> &adapter);
