#pragma once

#include "tools/linesim/console/command_reader.h"
#include "tools/linesim/console/event_log.h"

#include <QCoreApplication>

#include <optional>

/// Runs \a end, which takes commands by run() and has the signal quit, until it is told to quit. Returns the
/// exit status; see runSubcommand().
template <class End> [[nodiscard]] int runUntilQuit(End &end, const EventLog &log)
{
    CommandReader reader;
    QObject::connect(&reader, &CommandReader::command, &end, &End::run);
    QObject::connect(&end, &End::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!end.start())
        return 2;
    QCoreApplication::exec();
    return log.violations > 0 ? 1 : 0;
}

/// Makes an end of a kind and runs it; without \a options, which were not understood, that is the exit
/// status.
template <class End, class Options> [[nodiscard]] int runEnd(const std::optional<Options> &options)
{
    if (!options)
        return 2;
    EventLog log;
    End end(*options, log);
    return runUntilQuit(end, log);
}
