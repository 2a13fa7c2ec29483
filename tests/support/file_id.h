#pragma once

#include <QString>

/// What tells the file \a path from every other one: a file that was continued keeps it, one that was
/// replaced has another. 0 if there is none.
[[nodiscard]] quint64 fileId(const QString &path);
