#include "tools/linesim/peer_options.h"

#include "tools/linesim/event_log.h"

#include <QCommandLineParser>

#include <cstdio>

namespace
{
struct Option {
    const char *name, *value, *tells;
};

const Option table[] = {
    {"listen", "PORT", "wait for the workstation to call; 0 takes any port, which is printed"},
    {"connect", "HOST:PORT", "call the workstation, again and again"},
    {"address", "HOST", "listen on this address (127.0.0.1)"},
    {"from", "HOST", "call from this address of the machine"},
    {"retry", "MS", "from a loss or a failure to the next call (1000)"},
    {"key", "HEX", "agree on a key and cipher with it; 2 bytes and more"},
    {"seed", "HEX", "this end's seed byte; drawn without it"},
    {"send", "DIR", "send the files of a directory, by name, once the link is ready"},
    {"wrap", nullptr, "put a start mark and an end mark round each file"},
    {"start-mark", "TEXT", "the start mark of --wrap, with \\r and \\n for line ends"},
    {"end-mark", "TEXT", "the end mark of --wrap"},
    {"speed", "N", "characters a second (500); 0 sends each file at once"},
    {"pause", "MS", "behind each file (2000)"},
    {"store", "DIR", "keep what comes: 001.txt and on, stream.txt, stream.bin"},
    {"confirm", nullptr, "confirm each telegram"},
    {"window", "N", "characters of each window, 0 to 30 (30)"},
    {"window-pause", "MS", "from text taken to the next window (100)"},
    {"keep-alive", "MS", "between keep-alives (5000); 0 sends none"},
    {"answer", "MS", "how long an answer may take (3000)"},
    {"no-windows", nullptr, "give no window by itself"},
    {"silent", nullptr, "say nothing by itself and answer nothing"},
    {"do", "COMMAND", "run a command on each connection"},
    {"after", "MS:COMMAND", "run a command so long after each connection"},
};

void addOptions(QCommandLineParser &parser)
{
    for (const Option &option : table)
        parser.addOption(
            {QLatin1String(option.name), QLatin1String(option.tells), QLatin1String(option.value)});
}

/// Sets \a number from the option \a name if it is given; false if it is no number or negative.
bool readNumber(const QCommandLineParser &parser, const char *name, int &number, int base = 10)
{
    if (!parser.isSet(QLatin1String(name)))
        return true;
    bool ok = false;
    number = parser.value(QLatin1String(name)).toInt(&ok, base);
    return ok && number >= 0;
}

bool readPort(const QString &text, quint16 &port)
{
    bool ok = false;
    port = text.toUShort(&ok);
    return ok;
}

bool readTcp(const QCommandLineParser &parser, TcpEnd::Settings &tcp)
{
    tcp.listens = !parser.isSet(QStringLiteral("connect"));
    if (tcp.listens == !parser.isSet(QStringLiteral("listen")))
        return false;
    if (parser.isSet(QStringLiteral("address")))
        tcp.host = parser.value(QStringLiteral("address"));
    tcp.from = parser.value(QStringLiteral("from"));
    if (!readNumber(parser, "retry", tcp.retryMs))
        return false;
    if (tcp.listens)
        return readPort(parser.value(QStringLiteral("listen")), tcp.port);
    const QString target = parser.value(QStringLiteral("connect"));
    tcp.host = target.section(QLatin1Char(':'), 0, -2);
    return !QHostAddress(tcp.host).isNull() && readPort(target.section(QLatin1Char(':'), -1), tcp.port);
}

bool readLink(const QCommandLineParser &parser, LinkEnd::Settings &link)
{
    link.key = QByteArray::fromHex(parser.value(QStringLiteral("key")).toLatin1());
    link.silent = parser.isSet(QStringLiteral("silent"));
    link.grants = !parser.isSet(QStringLiteral("no-windows"));
    link.serverPolls = parser.isSet(QStringLiteral("connect"));
    int seed = 0;
    if (!readNumber(parser, "seed", seed, 16) || seed > 0xFF)
        return false;
    if (parser.isSet(QStringLiteral("seed")))
        link.seed = seed;
    return readNumber(parser, "window", link.window) && readNumber(parser, "window-pause", link.pauseMs) &&
           readNumber(parser, "keep-alive", link.keepAliveMs) && readNumber(parser, "answer", link.answerMs);
}

bool readFeed(const QCommandLineParser &parser, TelegramFeed::Settings &feed)
{
    feed.wrap = parser.isSet(QStringLiteral("wrap"));
    if (parser.isSet(QStringLiteral("start-mark")))
        feed.startMark = unescaped(parser.value(QStringLiteral("start-mark")));
    if (parser.isSet(QStringLiteral("end-mark")))
        feed.endMark = unescaped(parser.value(QStringLiteral("end-mark")));
    return readNumber(parser, "speed", feed.charactersPerSecond) && readNumber(parser, "pause", feed.pauseMs);
}

bool readTimed(const QCommandLineParser &parser, QVector<QPair<int, QString>> &timed)
{
    for (const QString &command : parser.values(QStringLiteral("do")))
        timed.append({0, command});
    for (const QString &value : parser.values(QStringLiteral("after"))) {
        bool ok = false;
        timed.append({value.section(QLatin1Char(':'), 0, 0).toInt(&ok), value.section(QLatin1Char(':'), 1)});
        if (!ok)
            return false;
    }
    return true;
}
} // namespace

std::optional<PeerOptions> readPeerOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The other end of a direct link over TCP."));
    addOptions(parser);
    parser.addHelpOption();
    if (!parser.parse(arguments)) {
        std::fputs(qPrintable(parser.errorText() + QLatin1Char('\n')), stderr);
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    PeerOptions options;
    options.sendDirectory = parser.value(QStringLiteral("send"));
    options.storeDirectory = parser.value(QStringLiteral("store"));
    options.confirm = parser.isSet(QStringLiteral("confirm"));
    if (readTcp(parser, options.tcp) && readLink(parser, options.link) && readFeed(parser, options.feed) &&
        readTimed(parser, options.timed) && parser.positionalArguments().isEmpty())
        return options;
    std::fputs("the options are not understood; one of --listen and --connect is needed\n", stderr);
    return std::nullopt;
}
