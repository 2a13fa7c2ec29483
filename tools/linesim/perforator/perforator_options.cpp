#include "tools/linesim/perforator/perforator_options.h"

#include "tools/linesim/far_end/far_end_options.h"

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"port", "PATH", "the port's path; without it the system's name for it"},
    {"serial", "NUMBER", "the adapter's serial number (20000001)"},
    {"punch", "FILE", "append each code as it is punched, a byte each"},
    {"punch-text", "FILE", "append the same as text"},
    {"tape", "FILE", "the tape in the reader, as text"},
    {"tape-codes", "FILE", "the tape in the reader, as codes, a byte each"},
    {"room", "N", "codes that wait for the punch at most (31)"},
    {"speed", "N", "codes a second, punched and read (50); 0 waits for nothing"},
    {"status", "MS", "between two statuses (100); 0 tells none"},
    {"answer", "MS", "how long the mode byte may take (3000)"},
};

bool readNumbers(const QCommandLineParser &parser, PerforatorOptions &options)
{
    return readNumber(parser, "room", options.room) && readNumber(parser, "speed", options.speed) &&
           readNumber(parser, "status", options.statusMs) && readNumber(parser, "answer", options.answerMs);
}
} // namespace

std::optional<PerforatorOptions> readPerforatorOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A paper-tape punch and reader on a serial port."));
    addOptions(parser, table);
    parser.addHelpOption();
    if (!parseFarEnd(parser, arguments))
        return std::nullopt;
    PerforatorOptions options;
    if (parser.isSet(QStringLiteral("serial")))
        options.serial = parser.value(QStringLiteral("serial"));
    options.port = parser.value(QStringLiteral("port"));
    options.punchFile = parser.value(QStringLiteral("punch"));
    options.punchTextFile = parser.value(QStringLiteral("punch-text"));
    options.tapeFile = parser.value(QStringLiteral("tape"));
    options.tapeCodesFile = parser.value(QStringLiteral("tape-codes"));
    if (readNumbers(parser, options) && parser.positionalArguments().isEmpty() &&
        (options.tapeFile.isEmpty() || options.tapeCodesFile.isEmpty()))
        return options;
    std::fputs("--room, --speed, --status and --answer take a number; one tape is enough\n", stderr);
    return std::nullopt;
}
