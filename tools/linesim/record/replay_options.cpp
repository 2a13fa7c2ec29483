#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/record/replay.h"

#include <QFile>

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"record", "FILE", "the record to be played"},
    {"listen", "PORT", "wait for the workstation to call; 0 takes any port, which is printed"},
    {"connect", "HOST:PORT", "call the workstation where the record has it called"},
    {"address", "HOST", "listen on this address (127.0.0.1)"},
    {"from", "HOST", "call from this address of the machine"},
    {"port", "PATH", "be the adapter on a serial port of this path instead"},
    {"serial", "NUMBER", "the adapter's serial number (10000001)"},
    {"speed", "N", "times as fast as the record (1); 0 waits for nothing but the workstation"},
    {"patience", "MS", "for the workstation, beyond its time in the record (60000)"},
    {"ignore", "HEX",
     "bytes of the workstation that are not compared, and of the far end that it may miss at its end, as "
     "16BF"},
};

bool readTcp(const QCommandLineParser &parser, TcpEnd::Settings &tcp)
{
    bool hasPort = false;
    tcp.callsAgain = false;
    tcp.listens = parser.isSet(QStringLiteral("listen"));
    if (parser.isSet(QStringLiteral("address")))
        tcp.host = parser.value(QStringLiteral("address"));
    tcp.from = parser.value(QStringLiteral("from"));
    const QString to = parser.value(tcp.listens ? QStringLiteral("listen") : QStringLiteral("connect"));
    if (!tcp.listens)
        tcp.host = to.section(QLatin1Char(':'), 0, -2);
    tcp.port = to.section(QLatin1Char(':'), -1).toUShort(&hasPort);
    return hasPort && !QHostAddress(tcp.host).isNull();
}

bool readLine(const QCommandLineParser &parser, ReplayOptions &options)
{
    int lines = 0;
    for (const char *name : {"listen", "connect", "port"})
        lines += parser.isSet(QLatin1String(name)) ? 1 : 0;
    options.onPort = parser.isSet(QStringLiteral("port"));
    options.port = parser.value(QStringLiteral("port"));
    if (parser.isSet(QStringLiteral("serial")))
        options.serial = parser.value(QStringLiteral("serial"));
    return lines == 1 && (options.onPort || readTcp(parser, options.tcp));
}

bool readPlayer(const QCommandLineParser &parser, RecordPlayer::Settings &player)
{
    bool isSpeed = true;
    int patienceMs = int(player.patienceMs);
    if (parser.isSet(QStringLiteral("speed")))
        player.speed = parser.value(QStringLiteral("speed")).toDouble(&isSpeed);
    for (const char byte : QByteArray::fromHex(parser.value(QStringLiteral("ignore")).toLatin1()))
        player.ignored.insert(byte);
    const bool understood = readNumber(parser, "patience", patienceMs);
    player.patienceMs = patienceMs;
    return isSpeed && player.speed >= 0 && understood;
}

bool readRecord(const QString &path, LineRecord &record)
{
    QFile file(path);
    QString error;
    if (!file.open(QIODevice::ReadOnly))
        error = file.errorString();
    const std::optional<LineRecord> read = LineRecord::parse(file.readAll(), error);
    if (read && error.isEmpty() && !read->events.isEmpty()) {
        record = *read;
        return true;
    }
    std::fputs(
        qPrintable(
            QStringLiteral("%1: %2\n").arg(path, error.isEmpty() ? QStringLiteral("nothing in it") : error)),
        stderr);
    return false;
}
} // namespace

std::optional<ReplayOptions> readReplayOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays the far end of a record to the workstation, and tells where it differs."));
    addOptions(parser, table);
    parser.addHelpOption();
    if (!parseFarEnd(parser, arguments))
        return std::nullopt;
    ReplayOptions options;
    const QString path = parser.value(QStringLiteral("record"));
    if (path.isEmpty() || !parser.positionalArguments().isEmpty() || !readLine(parser, options) ||
        !readPlayer(parser, options.player)) {
        std::fputs("--record is needed, and one of --listen, --connect and --port\n", stderr);
        return std::nullopt;
    }
    return readRecord(path, options.record) ? std::optional<ReplayOptions>(options) : std::nullopt;
}
