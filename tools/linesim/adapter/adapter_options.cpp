#include "tools/linesim/adapter/adapter_options.h"

#include "tools/linesim/adapter/adapter_bytes.h"
#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/nerva/nerva_options.h"
#include "tools/linesim/subcommands.h"

#include <cstdio>

namespace
{
constexpr int SmallestRoom = 4; // codes: a character of two, twice
constexpr int LatestDate = 311231;

const FarEndOption table[] = {
    {"port", "PATH", "the port's path, the same after each plugging; without it any, which is printed"},
    {"serial", "S", "the adapter's serial number (10000001)"},
    {"firmware", "YYMMDD",
     "its date, or \"new\" (231111), \"old\" (231110), which does not echo, \"none\", "
     "which does not tell it either (new)"},
    {"baud", "N", "speed of the line: 50, 100, 200 (200)"},
    {"room", "N", "codes that its buffer takes, 4 and more (64)"},
    {"status", "MS", "between statuses by itself (500)"},
    {"answer", "MS", "how long the answer to a status may take (1000)"},
    {"word", "MS", "silence behind which a word is not gone on with (500)"},
    {"mode", "MODE", "what the workstation must choose: any, none, 50, 100, 200, switched (the far end's)"},
    {"silent", nullptr, "say nothing from the start"},
};

bool readFirmware(const QString &text, int &version)
{
    bool ok = true;
    if (text.isEmpty() || text == QLatin1String("new"))
        version = LineAdapter::NewVersion;
    else if (text == QLatin1String("old"))
        version = LineAdapter::OldVersion;
    else if (text == QLatin1String("none"))
        version = 0;
    else
        version = 20'000'000 + text.toInt(&ok);
    const int date = version % 1'000'000;
    return ok && date >= 0 && date <= LatestDate && date / 100 % 100 <= 12 && date % 100 <= 31;
}

/// The mode byte of a word; that of the far end without one.
bool readMode(const QString &word, const QString &farEnd, LineAdapter::Settings &adapter)
{
    const bool calls = word.isEmpty() && farEnd == QLatin1String("switch");
    if (calls || word == QLatin1String("switched"))
        adapter.expectedMode = AdapterBytes::Switched;
    else if (word == QLatin1String("any"))
        adapter.expectedMode = ProgramRules::AnyMode;
    else if (word == QLatin1String("none"))
        adapter.expectedMode = AdapterBytes::NoSpeed;
    else
        adapter.expectedMode = ProgramRules::modeOf(word.isEmpty() ? adapter.baud : word.toInt());
    return adapter.expectedMode != 0;
}

bool readNumbers(const QCommandLineParser &parser, LineAdapter::Settings &adapter)
{
    return readNumber(parser, "baud", adapter.baud) && ProgramRules::modeOf(adapter.baud) != 0 &&
           readNumber(parser, "room", adapter.roomCodes) && adapter.roomCodes >= SmallestRoom &&
           readNumber(parser, "status", adapter.statusMs) && adapter.statusMs > 0 &&
           readNumber(parser, "answer", adapter.answerMs) && readNumber(parser, "word", adapter.wordMs);
}

bool read(const QCommandLineParser &parser, bool nerva, AdapterOptions &options)
{
    AdapterLine::Settings &line = options.line;
    options.farEnd = parser.positionalArguments();
    line.port = parser.value(QStringLiteral("port"));
    if (parser.isSet(QStringLiteral("serial")))
        line.serial = parser.value(QStringLiteral("serial"));
    line.adapter.silent = parser.isSet(QStringLiteral("silent"));
    return !options.farEnd.isEmpty() && (!nerva || readNervaOptions(parser, line)) &&
           readNumbers(parser, line.adapter) &&
           readFirmware(parser.value(QStringLiteral("firmware")), line.adapter.version) &&
           readMode(parser.value(QStringLiteral("mode")), options.farEnd.first(), line.adapter);
}
} // namespace

std::optional<AdapterOptions> readAdapterOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    const bool nerva = arguments.value(0) == QLatin1String("nerva");
    parser.setApplicationDescription(
        nerva ? QStringLiteral("An Ethernet adapter at a serial port, which can be configured.")
              : QStringLiteral("A line adapter at a serial port, with a far end behind it."));
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    addOptions(parser, table);
    if (nerva)
        addNervaOptions(parser);
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("peer|centre|switch"),
                                 QStringLiteral("the far end, followed by its own options"));
    AdapterOptions options;
    if (!parseFarEnd(parser, arguments))
        return std::nullopt;
    if (read(parser, nerva, options))
        return options;
    std::fputs("the options are not understood; peer, centre or switch stands behind them\n", stderr);
    return std::nullopt;
}

int runAdapter(const QStringList &arguments)
{
    const std::optional<AdapterOptions> options = readAdapterOptions(arguments);
    return options ? runFarEndNamed(options->farEnd, options->line) : 2;
}
