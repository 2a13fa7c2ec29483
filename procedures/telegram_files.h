#pragma once

#include "records/protocol.h"

#include <QString>

#include <optional>

/// What the line procedures share about the files of telegrams.

/// Path of the queue file \a name.
[[nodiscard]] QString queuePath(const QString &name);
/// Bytes that a telegram of the greatest length, of 16 M characters, can have as UTF-8.
constexpr qint64 LargestTelegramFile = 3LL * 16 * 1024 * 1024;
/// The text of a file up to its first NUL; bytes that are no UTF-8 become replacement characters. Nothing if
/// it cannot be read, is no ordinary file, or is longer than any telegram that is received.
[[nodiscard]] std::optional<QString> readTelegram(const QString &path);

// What an option of the kind AutoPrint says.
[[nodiscard]] bool printsReceived(int autoPrintMode);
[[nodiscard]] bool printsSent(int autoPrintMode);
/// Prints a telegram, with its journal line.
void printTelegram(const QString &text);

/// A journal line that waits for the end of the running one.
void noteEvent(const QString &text, ProtocolTypes type = ProtocolInfo);
