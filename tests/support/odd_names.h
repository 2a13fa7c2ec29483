#pragma once

#include <QStringList>

/// A column "name" with odd names, one a row, that the system's directories hold.
void oddNames();

/// Such names that the queue lists, the category "u" at its place.
[[nodiscard]] QStringList foreignNames();
