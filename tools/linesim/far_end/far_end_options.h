#pragma once

#include "tools/linesim/adapter/adapter_line.h"
#include "tools/linesim/line/link_end.h"
#include "tools/linesim/line/tcp_end.h"

#include <QCommandLineParser>
#include <QPair>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>

class EventLog;
class FarLine;

/// An option of a subcommand; without a value it is a switch.
struct FarEndOption {
    const char *name, *value, *tells;
};

/// What every far end takes: its line, what it keeps, commands and their occasions.
struct FarEndOptions {
    std::optional<AdapterLine::Settings> adapter; ///< the line is that one; without it TCP
    TcpEnd::Settings tcp;
    LinkEnd::Settings link;
    QVector<QPair<int, QString>> timed; ///< commands, each so many ms after every connection
    QString scenario;                   ///< a file of timed commands; empty is none
    QString storeDirectory;             ///< what comes, see TelegramStore; empty keeps nothing
};

template <class Table> void addOptions(QCommandLineParser &parser, const Table &table)
{
    for (const FarEndOption &option : table)
        parser.addOption(
            {QLatin1String(option.name), QString::fromUtf8(option.tells), QLatin1String(option.value)});
}

/// Adds the options that every far end takes; those of TCP only if that is its line.
void addFarEndOptions(QCommandLineParser &parser, const FarEndOptions &options);
/// Parses \a arguments; false, with the reason on standard error, if that fails. "--help" ends the process.
[[nodiscard]] bool parseFarEnd(QCommandLineParser &parser, const QStringList &arguments);
/// False if a value makes no sense.
[[nodiscard]] bool readFarEnd(const QCommandLineParser &parser, FarEndOptions &options);
/// The line that the options choose.
[[nodiscard]] std::unique_ptr<FarLine> makeLine(const FarEndOptions &options, EventLog &log);
/// Sets \a number from the option \a name if it is given; false if it is no number or negative.
[[nodiscard]] bool readNumber(const QCommandLineParser &parser, const char *name, int &number, int base = 10);
