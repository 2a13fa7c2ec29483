#include "tools/linesim/centre/centre.h"

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"send", "DIR", "send the files of a directory, by name, while the channel is open"},
    {"pause", "MS", "between two of them (5000)"},
    {"crossing", "S", "how late a telegram may begin behind the closing of the channel (20)"},
    {"header", "FORM", "in front of each telegram: 1, 2, 3 or turn"},
};
} // namespace

std::optional<CentreOptions> readCentreOptions(const QStringList &arguments,
                                               const std::optional<AdapterLine::Settings> &adapter)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A message switching centre."));
    addOptions(parser, table);
    CentreOptions options;
    options.adapter = adapter;
    addFarEndOptions(parser, options);
    if (!parseFarEnd(parser, arguments) || !readFarEnd(parser, options))
        return std::nullopt;
    options.sendDirectory = parser.value(QStringLiteral("send"));
    const QString header = parser.value(QStringLiteral("header"));
    options.desk.header = header == QLatin1String("turn") ? 4 : header.toInt();
    if (readNumber(parser, "pause", options.feedPauseMs) &&
        readNumber(parser, "crossing", options.desk.crossingSeconds))
        return options;
    std::fputs("--pause and --crossing take a number\n", stderr);
    return std::nullopt;
}
