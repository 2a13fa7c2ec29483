#include "tools/linesim/centre/centre.h"
#include "tools/linesim/centre/centre_texts.h"

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"send", "DIR", "send the files of a directory, by name, while the channel is open"},
    {"pause", "MS", "between two of them (5000)"},
    {"channel", "NAME", "name of the channel (АБВ123/4)"},
    {"note", "NOTE", "behind each telegram: long, long-marked, dashed, short, short-marked or a text"},
    {"header", "FORM", "in front of each telegram: 1, 2, 3 or turn"},
    {"clock-off", "MINUTES", "how far the centre's clock is off, also negative"},
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
    if (parser.isSet(QStringLiteral("channel")))
        options.desk.channelName = parser.value(QStringLiteral("channel"));
    options.desk.note = centreNote(parser.value(QStringLiteral("note")));
    const QString header = parser.value(QStringLiteral("header"));
    options.desk.header = header == QLatin1String("turn") ? 4 : header.toInt();
    bool ok = true;
    if (parser.isSet(QStringLiteral("clock-off")))
        options.desk.clockOffMinutes = parser.value(QStringLiteral("clock-off")).toInt(&ok);
    if (ok && readNumber(parser, "pause", options.feedPauseMs))
        return options;
    std::fputs("--pause and --clock-off take a number\n", stderr);
    return std::nullopt;
}
