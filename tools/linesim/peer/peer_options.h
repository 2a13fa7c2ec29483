#pragma once

#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/far_end/telegram_feed.h"

#include <QStringList>

#include <optional>

/// How "linesim peer" is to behave.
struct PeerOptions : FarEndOptions {
    TelegramFeed::Settings feed;
    QString sendDirectory; ///< empty sends nothing by itself
    bool confirm = false;  ///< answer each telegram with the confirmation line
    bool echo = false;     ///< send each telegram back, as it reads behind a line of the 5-bit code
};

/// Reads \a arguments for a far end over TCP or behind \a adapter, the first being the subcommand's name.
/// Empty, with the reason on standard error, if they are not understood; "--help" prints the options and ends
/// the process.
[[nodiscard]] std::optional<PeerOptions>
readPeerOptions(const QStringList &arguments,
                const std::optional<AdapterLine::Settings> &adapter = std::nullopt);
