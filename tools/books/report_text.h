#pragma once

#include "day_report.h"

/// The day as aligned columns for a terminal, with a blank line behind it.
[[nodiscard]] QString textOf(const CDayReport &report);
/// The days as a table for a spreadsheet: a heading and a line for each day, parted by semicolons.
[[nodiscard]] QString csvOf(const QVector<CDayReport> &reports);
