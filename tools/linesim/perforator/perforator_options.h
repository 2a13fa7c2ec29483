#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// How "linesim perforator" is to behave.
struct PerforatorOptions {
    QString serial = QStringLiteral("20000001"); ///< printed for VELDA_PORTS
    QString port;                                ///< path of the port; empty takes what the system gives
    QString punchFile;                           ///< gets each code as punched, a byte each
    QString punchTextFile;                       ///< gets the same as text
    QString tapeFile;                            ///< text on the tape in the reader
    QString tapeCodesFile;                       ///< codes on it, a byte each, instead of text
    int room = 31;                               ///< codes that wait for the punch at most
    int speed = 50;                              ///< codes a second, punched and read; 0 waits for nothing
    int statusMs = 100;                          ///< from one status to the next; 0 tells none
    int answerMs = 3000;                         ///< how long the mode byte may take
};

/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<PerforatorOptions> readPerforatorOptions(const QStringList &arguments);
