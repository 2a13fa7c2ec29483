#include "tools/linesim/subcommands.h"

#include "tools/linesim/adapter/adapter_options.h"
#include "tools/linesim/centre/centre.h"
#include "tools/linesim/loader/loader.h"
#include "tools/linesim/network/channel_switch.h"
#include "tools/linesim/peer/peer.h"
#include "tools/linesim/perforator/perforator.h"
#include "tools/linesim/record/replay.h"
#include "tools/linesim/record/tap.h"

#include <cstdio>

namespace
{
struct Subcommand {
    const char *name;
    const char *plays;
    int (*run)(const QStringList &arguments);
};

const Subcommand others[] = {
    {"adapter", "a line adapter on a serial port, with a far end behind it", &runAdapter},
    {"nerva", "an Ethernet adapter on a serial port, with its configuration and a far end behind it",
     &runAdapter},
    {"perforator", "a paper-tape punch and reader on a serial port", &runPerforator},
    {"loader", "an adapter's boot loader on a serial port", &runLoader},
    {"tap", "nobody: stands in a line and records what both ends say", &runTap},
    {"replay", "the far end that a record was made of", &runReplay},
};

/// What stands at the end of a line, over TCP or behind an adapter.
struct FarEndSubcommand {
    const char *name;
    const char *plays;
    int (*run)(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter);
};

const FarEndSubcommand farEnds[] = {
    {"peer", "the other end of a direct link", &runPeer},
    {"centre", "a message switching centre", &runCentre},
    {"switch", "a switched-channel network", &runChannelSwitch},
};

template <class Table> const auto *find(const Table &table, const QString &name)
{
    for (const auto &known : table)
        if (name == QLatin1String(known.name))
            return &known;
    return static_cast<decltype(&table[0])>(nullptr);
}

template <class Table> QString told(const Table &table)
{
    QString text;
    for (const auto &known : table)
        text += QStringLiteral("  %1 %2\n").arg(QLatin1String(known.name), QLatin1String(known.plays));
    return text;
}

int refuse()
{
    std::fputs(qPrintable(usage()), stderr);
    return 2;
}
} // namespace

QString usage()
{
    return QStringLiteral("usage: linesim SUBCOMMAND OPTION...\n") + told(farEnds) + told(others) +
           QStringLiteral("\"linesim SUBCOMMAND --help\" tells the options.\n");
}

int runSubcommand(const QStringList &arguments)
{
    const QStringList own = arguments.mid(1);
    if (const Subcommand *known = find(others, own.value(0)))
        return known->run(own);
    return runFarEndNamed(own, std::nullopt);
}

int runFarEndNamed(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter)
{
    const FarEndSubcommand *farEnd = find(farEnds, arguments.value(0));
    return farEnd ? farEnd->run(arguments, adapter) : refuse();
}
