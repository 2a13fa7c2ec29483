#pragma once

#include "tools/linesim/adapter/adapter_line.h"

#include <QCommandLineParser>

/// Adds the options that "linesim nerva" takes beside those of a line adapter.
void addNervaOptions(QCommandLineParser &parser);
/// False if a value makes no sense.
[[nodiscard]] bool readNervaOptions(const QCommandLineParser &parser, AdapterLine::Settings &line);
