#pragma once

#include "tools/linesim/link_end.h"
#include "tools/linesim/tcp_end.h"

#include <QCommandLineParser>
#include <QPair>
#include <QString>
#include <QVector>

/// An option of a subcommand; without a value it is a switch.
struct FarEndOption {
    const char *name, *value, *tells;
};

/// What every far end takes: its TCP end, its link, commands to run on each connection.
struct FarEndOptions {
    TcpEnd::Settings tcp;
    LinkEnd::Settings link;
    QVector<QPair<int, QString>> timed; ///< commands, each so many ms after every connection
};

template <class Table> void addOptions(QCommandLineParser &parser, const Table &table)
{
    for (const FarEndOption &option : table)
        parser.addOption(
            {QLatin1String(option.name), QString::fromUtf8(option.tells), QLatin1String(option.value)});
}

/// Adds the options that every far end takes.
void addFarEndOptions(QCommandLineParser &parser);
/// Parses \a arguments; false, with the reason on standard error, if that fails. "--help" ends the process.
[[nodiscard]] bool parseFarEnd(QCommandLineParser &parser, const QStringList &arguments);
/// False if a value makes no sense.
[[nodiscard]] bool readFarEnd(const QCommandLineParser &parser, FarEndOptions &options);
/// Sets \a number from the option \a name if it is given; false if it is no number or negative.
[[nodiscard]] bool readNumber(const QCommandLineParser &parser, const char *name, int &number, int base = 10);
