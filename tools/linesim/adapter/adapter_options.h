#pragma once

#include "tools/linesim/adapter/adapter_line.h"

#include <QStringList>

#include <optional>

/// How "linesim adapter", or "linesim nerva", is to behave, and what stands behind it.
struct AdapterOptions {
    AdapterLine::Settings line;
    QStringList farEnd; ///< its subcommand and options
};

/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<AdapterOptions> readAdapterOptions(const QStringList &arguments);

/// The subcommands "adapter" and "nerva", which the first argument names; see runSubcommand().
[[nodiscard]] int runAdapter(const QStringList &arguments);
