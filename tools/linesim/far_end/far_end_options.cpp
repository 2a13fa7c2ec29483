#include "tools/linesim/far_end/far_end_options.h"

#include "tools/linesim/line/tcp_line.h"
#include "tools/linesim/nerva/nerva_line.h"

#include <cstdio>

namespace
{
const FarEndOption tcpTable[] = {
    {"listen", "PORT", "wait for the workstation to call; 0 takes any port, which is printed"},
    {"connect", "HOST:PORT", "call the workstation, again and again"},
    {"address", "HOST", "listen on this address (127.0.0.1)"},
    {"from", "HOST", "call from this address of the machine"},
    {"retry", "MS", "from a loss or a failure to the next call (1000)"},
    {"key", "HEX", "agree on a key and cipher with it; 2 bytes and more"},
    {"seed", "HEX", "this end's seed byte; drawn without it"},
    {"window", "N", "characters of each window, 0 to 30 (30)"},
    {"window-pause", "MS", "from text taken to the next window (100)"},
    {"keep-alive", "MS", "between keep-alives (5000); 0 sends none"},
    {"answer", "MS", "how long an answer may take (3000)"},
    {"no-windows", nullptr, "give no window by itself"},
    {"silent", nullptr, "say nothing by itself and answer nothing"},
};

const FarEndOption table[] = {
    {"do", "COMMAND", "run a command on each connection"},
    {"after", "MS:COMMAND", "run a command so long after each connection"},
    {"scenario", "FILE", "commands at their times: \"12:30 COMMAND\", \"+10 COMMAND\""},
    {"store", "DIR", "keep what comes: 001.txt and on, stream.txt, stream.bin"},
};

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

void addFarEndOptions(QCommandLineParser &parser, const FarEndOptions &options)
{
    if (!options.adapter)
        addOptions(parser, tcpTable);
    addOptions(parser, table);
    parser.addHelpOption();
}

bool parseFarEnd(QCommandLineParser &parser, const QStringList &arguments)
{
    if (!parser.parse(arguments)) {
        std::fputs(qPrintable(parser.errorText() + QLatin1Char('\n')), stderr);
        return false;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    return true;
}

bool readFarEnd(const QCommandLineParser &parser, FarEndOptions &options)
{
    options.scenario = parser.value(QStringLiteral("scenario"));
    options.storeDirectory = parser.value(QStringLiteral("store"));
    const bool line = options.adapter || (readTcp(parser, options.tcp) && readLink(parser, options.link));
    if (line && readTimed(parser, options.timed) && parser.positionalArguments().isEmpty())
        return true;
    std::fputs(options.adapter ? "the options are not understood\n"
                               : "the options are not understood; one of --listen and --connect is needed\n",
               stderr);
    return false;
}

std::unique_ptr<FarLine> makeLine(const FarEndOptions &options, EventLog &log)
{
    if (options.adapter && options.adapter->nerva)
        return std::make_unique<NervaLine>(*options.adapter, log);
    if (options.adapter)
        return std::make_unique<AdapterLine>(*options.adapter, log);
    return std::make_unique<TcpLine>(options.tcp, options.link, log);
}

bool readNumber(const QCommandLineParser &parser, const char *name, int &number, int base)
{
    if (!parser.isSet(QLatin1String(name)))
        return true;
    bool ok = false;
    number = parser.value(QLatin1String(name)).toInt(&ok, base);
    return ok && number >= 0;
}
