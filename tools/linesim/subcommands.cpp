#include "tools/linesim/subcommands.h"

#include "tools/linesim/centre.h"
#include "tools/linesim/channel_switch.h"
#include "tools/linesim/peer.h"

#include <cstdio>

namespace
{
struct Subcommand {
    const char *name;
    const char *plays;
    int (*run)(const QStringList &arguments);
};

const Subcommand subcommands[] = {
    {"peer", "the other end of a direct link over TCP", &runPeer},
    {"centre", "a message switching centre over TCP", &runCentre},
    {"switch", "a switched-channel network over TCP", &runChannelSwitch},
};
} // namespace

QString usage()
{
    QString text = QStringLiteral("usage: linesim SUBCOMMAND OPTION...\n");
    for (const Subcommand &subcommand : subcommands)
        text +=
            QStringLiteral("  %1 %2\n").arg(QLatin1String(subcommand.name), QLatin1String(subcommand.plays));
    return text + QStringLiteral("\"linesim SUBCOMMAND --help\" tells the options.\n");
}

int runSubcommand(const QStringList &arguments)
{
    const QString name = arguments.value(1);
    for (const Subcommand &subcommand : subcommands)
        if (name == QLatin1String(subcommand.name))
            return subcommand.run(arguments.mid(1));
    std::fputs(qPrintable(usage()), stderr);
    return 2;
}
