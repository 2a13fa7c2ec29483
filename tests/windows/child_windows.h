#pragma once

#include "tests/e2e/child.h"

/// What the user and the system do with the windows of another program.
namespace ChildWindows
{
[[nodiscard]] QStringList titles(const Child &child); ///< of the visible ones
void close(const Child &child);                       ///< the visible ones, by their cross
/// As at the end of the session: asks every window, hidden or not. False if one refuses.
[[nodiscard]] bool endSession(const Child &child);
} // namespace ChildWindows
