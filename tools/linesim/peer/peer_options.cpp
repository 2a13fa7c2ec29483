#include "tools/linesim/peer/peer_options.h"

#include "tools/linesim/console/event_log.h"

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"send", "DIR", "send the files of a directory, by name, once the link is ready"},
    {"wrap", nullptr, "put a start mark and an end mark round each file"},
    {"start-mark", "TEXT", "the start mark of --wrap, with \\r and \\n for line ends"},
    {"end-mark", "TEXT", "the end mark of --wrap"},
    {"speed", "N", "characters a second (500); 0 sends each file at once"},
    {"pause", "MS", "behind each file (2000)"},
    {"confirm", nullptr, "confirm each telegram"},
    {"echo", nullptr,
     "send each telegram back as a line of the 5-bit code brings it, with its register marks"},
};

bool readFeed(const QCommandLineParser &parser, TelegramFeed::Settings &feed)
{
    feed.wrap = parser.isSet(QStringLiteral("wrap"));
    if (parser.isSet(QStringLiteral("start-mark")))
        feed.startMark = unescaped(parser.value(QStringLiteral("start-mark")));
    if (parser.isSet(QStringLiteral("end-mark")))
        feed.endMark = unescaped(parser.value(QStringLiteral("end-mark")));
    return readNumber(parser, "speed", feed.charactersPerSecond) && readNumber(parser, "pause", feed.pauseMs);
}
} // namespace

std::optional<PeerOptions> readPeerOptions(const QStringList &arguments,
                                           const std::optional<AdapterLine::Settings> &adapter)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The other end of a direct link."));
    addOptions(parser, table);
    PeerOptions options;
    options.adapter = adapter;
    addFarEndOptions(parser, options);
    if (!parseFarEnd(parser, arguments) || !readFarEnd(parser, options))
        return std::nullopt;
    options.sendDirectory = parser.value(QStringLiteral("send"));
    options.confirm = parser.isSet(QStringLiteral("confirm"));
    options.echo = parser.isSet(QStringLiteral("echo"));
    if (readFeed(parser, options.feed))
        return options;
    std::fputs("--speed and --pause take a number\n", stderr);
    return std::nullopt;
}
