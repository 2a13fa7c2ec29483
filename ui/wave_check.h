#pragma once

#include <QString>

/// Whether \a path is a RIFF sound file with a format and at least one byte of sound, and holds the whole of
/// the sound that its head declares. Qt's player waits for ever for what is missing.
[[nodiscard]] bool isWholeWaveFile(const QString &path);
