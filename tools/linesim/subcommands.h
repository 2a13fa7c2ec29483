#pragma once

#include "tools/linesim/adapter/adapter_line.h"

#include <QStringList>

#include <optional>

/// Runs the far end that the first argument after the program's name chooses, with the arguments behind
/// it, until it ends. Returns the exit status: 0 as asked, 1 after a breach of the rules by the
/// workstation, 2 for arguments that are not understood (the usage goes to standard error).
[[nodiscard]] int runSubcommand(const QStringList &arguments);

/// Runs the far end that \a arguments begin with, over TCP or behind \a adapter; likewise.
[[nodiscard]] int runFarEndNamed(const QStringList &arguments,
                                 const std::optional<AdapterLine::Settings> &adapter);

/// The subcommands on offer, one line each: name, blank, what it plays.
[[nodiscard]] QString usage();
