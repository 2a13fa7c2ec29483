#pragma once

#include <QDateTime>

class QFileInfo;

/// When \a file came into being, in local time: its time of birth or, where the file system keeps none, the
/// oldest of the times that it does keep. Invalid for a missing file.
[[nodiscard]] QDateTime creationTime(const QFileInfo &file);
