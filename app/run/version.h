#pragma once

#include <QString>

/// The version of the newest heading of CHANGELOG.md, "2026.07.31".
[[nodiscard]] QString programVersion();
