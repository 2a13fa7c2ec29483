#pragma once

#include "records/protocol.h"

#include <QString>

#include <optional>

/// What the line procedures share: the files of telegrams, and what goes with their coming and going.

/// Path of the queue file \a name.
[[nodiscard]] QString queuePath(const QString &name);
/// Bytes that a telegram of the greatest length, of 16 M characters, can have as UTF-8.
constexpr qint64 LargestTelegramFile = 3LL * 16 * 1024 * 1024;
/// The text of a file up to its first NUL; bytes that are no UTF-8 become replacement characters. Nothing if
/// it cannot be read, is no ordinary file, or is longer than any telegram that is received.
[[nodiscard]] std::optional<QString> readTelegram(const QString &path);

/// The journal line of a sending, then the text of the queue file State.currentFile. Nothing, with a journal
/// line and no current file, if it cannot be read.
[[nodiscard]] std::optional<QString> openQueueFile();
/// \a text as it is stored: without register marks if the option says so.
[[nodiscard]] QString storedForm(const QString &text);

/// Plays \a file, unless \a type is silent or another sound plays.
void announce(const QString &file, int type);
/// Empties the send buffer.
void forgetUnsent();

// What an option of the kind AutoPrint says.
[[nodiscard]] bool printsReceived(int autoPrintMode);
[[nodiscard]] bool printsSent(int autoPrintMode);
/// Prints a telegram, with its journal line.
void printTelegram(const QString &text);

/// A journal line that waits for the end of the running one.
void noteEvent(const QString &text, ProtocolTypes type = ProtocolInfo);
