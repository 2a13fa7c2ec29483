#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/record/tap.h"

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"record", "FILE", "where the record goes, over a former one"},
    {"listen", "PORT", "wait for the end that calls; 0 takes any port, which is printed"},
    {"address", "HOST", "wait on this address (127.0.0.1)"},
    {"to", "HOST:PORT", "the end that waits"},
    {"from", "HOST", "call it from this address of the machine"},
    {"workstation-listens", nullptr, "it is the far end that calls"},
    {"device", "PATH", "instead of TCP: the serial port of the adapter"},
    {"port", "PATH", "the serial port for the workstation; without it the system's name for it"},
    {"serial", "NUMBER", "the adapter's serial number (10000001)"},
};

std::optional<TappedPort::Settings> readPort(const QCommandLineParser &parser)
{
    TappedPort::Settings port;
    port.device = parser.value(QStringLiteral("device"));
    port.port = parser.value(QStringLiteral("port"));
    if (parser.isSet(QStringLiteral("serial")))
        port.serial = parser.value(QStringLiteral("serial"));
    return port;
}

bool readTcp(const QCommandLineParser &parser, TappedTcp::Settings &tcp)
{
    bool hasPort = false, hasHostPort = false;
    tcp.port = parser.value(QStringLiteral("listen")).toUShort(&hasPort);
    if (parser.isSet(QStringLiteral("address")))
        tcp.address = parser.value(QStringLiteral("address"));
    const QString to = parser.value(QStringLiteral("to"));
    tcp.host = to.section(QLatin1Char(':'), 0, -2);
    tcp.hostPort = to.section(QLatin1Char(':'), -1).toUShort(&hasHostPort);
    tcp.from = parser.value(QStringLiteral("from"));
    tcp.workstationListens = parser.isSet(QStringLiteral("workstation-listens"));
    return hasPort && hasHostPort && !QHostAddress(tcp.host).isNull();
}

bool readLine(const QCommandLineParser &parser, TapOptions &options)
{
    const bool hasTcp = parser.isSet(QStringLiteral("listen")) || parser.isSet(QStringLiteral("to"));
    if (!parser.isSet(QStringLiteral("device")))
        return readTcp(parser, options.tcp);
    options.port = readPort(parser);
    return !hasTcp;
}
} // namespace

std::optional<TapOptions> readTapOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Stands between the workstation and any far end, and records what both say."));
    addOptions(parser, table);
    parser.addHelpOption();
    if (!parseFarEnd(parser, arguments))
        return std::nullopt;
    TapOptions options;
    options.record = parser.value(QStringLiteral("record"));
    if (!options.record.isEmpty() && readLine(parser, options) && parser.positionalArguments().isEmpty())
        return options;
    std::fputs("--record is needed, and --listen with --to, or --device\n", stderr);
    return std::nullopt;
}
