#include "tools/linesim/network/channel_switch.h"

#include <QFile>

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"subscribers", "FILE", "who can be called, one a line: \"NUMBER:ANSWERBACK:HABITS/HABITS\""},
    {"subscriber", "LINE", "one more of them"},
    {"terminal-ao", "TEXT", "the text of the workstation's own answerback"},
    {"stamp", "FORMAT", "the station's time stamp, \"<\" and \">\" for line ends (\"<> #hh.mm\")"},
    {"sign", "WORD", "how success shows: stamp, df, ask, silence (stamp)"},
    {"text-signals", nullptr, "calls and hang-ups as \"!>ВЫЗОВ\" and \"!>ОТБОЙ\""},
    {"point", "NAME", "tell the channel's name (\"АБ-123456\") when the link is there"},
    {"centre-type", "N", "whose exit to the centre it is, 0 to 4 (0)"},
    {"line-first", nullptr, "the centre's answerbacks begin with the line end"},
    {"telegram", "TEXT", "what a party sends, with \\r and \\n for line ends"},
    {"patience", "S", "seconds for what the workstation owes (30)"},
};

bool refuse(const QString &what)
{
    std::fputs(qPrintable(QStringLiteral("not understood: ") + what + QLatin1Char('\n')), stderr);
    return false;
}

bool readSubscribers(const QCommandLineParser &parser, QVector<Subscriber> &subscribers)
{
    QStringList lines = parser.values(QStringLiteral("subscriber"));
    if (parser.isSet(QStringLiteral("subscribers"))) {
        QFile file(parser.value(QStringLiteral("subscribers")));
        if (!file.open(QIODevice::ReadOnly))
            return refuse(file.fileName());
        lines.prepend(QString::fromUtf8(file.readAll()));
    }
    QString wrong;
    const auto read = parseSubscribers(lines.join(QLatin1Char('\n')), wrong);
    if (read)
        subscribers = *read;
    return read ? true : refuse(wrong);
}

bool readLine(const QCommandLineParser &parser, SwitchedLine::Settings &line)
{
    if (parser.isSet(QStringLiteral("stamp")))
        line.stampFormat = parser.value(QStringLiteral("stamp"));
    if (parser.isSet(QStringLiteral("sign")))
        line.sign = parser.value(QStringLiteral("sign"));
    if (parser.isSet(QStringLiteral("telegram")))
        line.party.telegram = unescaped(parser.value(QStringLiteral("telegram")));
    line.textSignals = parser.isSet(QStringLiteral("text-signals"));
    line.party.centre.lineFirst = parser.isSet(QStringLiteral("line-first"));
    if (!readNumber(parser, "centre-type", line.party.centre.type) ||
        NetworkForms::longCentreLength(line.party.centre.type) == 0)
        return refuse(QStringLiteral("--centre-type"));
    if (!readNumber(parser, "patience", line.patience))
        return refuse(QStringLiteral("--patience"));
    line.party.patience = line.patience;
    QString wrong;
    return parseHabits(QStringLiteral("sign=") + line.sign, wrong) ? true : refuse(wrong);
}
} // namespace

std::optional<ChannelSwitchOptions>
readChannelSwitchOptions(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A switched-channel network."));
    addOptions(parser, table);
    ChannelSwitchOptions options;
    options.adapter = adapter;
    addFarEndOptions(parser, options);
    if (!parseFarEnd(parser, arguments) || !readFarEnd(parser, options) ||
        !readSubscribers(parser, options.line.subscribers) || !readLine(parser, options.line))
        return std::nullopt;
    options.terminalAnswerback = parser.value(QStringLiteral("terminal-ao"));
    options.channelName = parser.value(QStringLiteral("point"));
    return options;
}
