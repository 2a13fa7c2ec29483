#pragma once

#include "records/protocol.h"

#include <QString>

#include <optional>

/// What the line procedures share about the files of telegrams.

/// Path of the queue file \a name.
[[nodiscard]] QString queuePath(const QString &name);
/// The text of a file up to its first NUL; bytes that are no UTF-8 become replacement characters. Nothing if
/// it cannot be read.
[[nodiscard]] std::optional<QString> readTelegram(const QString &path);

// The option autoPrintMode: 1 received, 2 sent, 3 both; anything else prints nothing.
[[nodiscard]] bool printsReceived(int autoPrintMode);
[[nodiscard]] bool printsSent(int autoPrintMode);
/// Prints a telegram, with its journal line.
void printTelegram(const QString &text);

/// A journal line that waits for the end of the running one.
void noteEvent(const QString &text, ProtocolTypes type = ProtocolInfo);
