#pragma once

#include "tools/linesim/link_end.h"
#include "tools/linesim/tcp_end.h"
#include "tools/linesim/telegram_feed.h"

#include <QPair>
#include <QStringList>
#include <QVector>

#include <optional>

/// How "linesim peer" is to behave.
struct PeerOptions {
    TcpEnd::Settings tcp;
    LinkEnd::Settings link;
    TelegramFeed::Settings feed;
    QString sendDirectory;              ///< empty sends nothing by itself
    QString storeDirectory;             ///< empty keeps nothing
    bool confirm = false;               ///< answer each telegram with the confirmation line
    QVector<QPair<int, QString>> timed; ///< commands, each so many ms after every connection
};

/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<PeerOptions> readPeerOptions(const QStringList &arguments);
