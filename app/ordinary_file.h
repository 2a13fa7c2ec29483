#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <optional>

/// Access to files that others may have put in the place of ours. A FIFO, a device or a link to one would
/// hold the program up, or do something by being opened; only ordinary files and links to them are opened.

/// Opens \a file by its name without ever waiting: ReadOnly, ReadWrite, or WriteOnly | Append, which makes a
/// file that is missing. False if it is none of the ordinary kind or cannot be opened.
[[nodiscard]] bool openOrdinary(QFile &file, QIODevice::OpenMode mode);
/// The content of the file \a path. Nothing if it cannot be read or has more than \a limit bytes.
[[nodiscard]] std::optional<QByteArray> readOrdinary(const QString &path, qint64 limit);
/// Brings what has been written to \a file, which is open and flushed, onto the disk itself, if that can be.
void syncToDisk(const QFile &file);
/// Brings what has been made, renamed and removed beside \a path onto the disk itself, if that can be.
void syncNames(const QString &path);
/// Gives \a from the name \a to in one step, over a file that stands there, and for good: the new name is on
/// the disk itself.
[[nodiscard]] bool moveOver(const QString &from, const QString &to);
/// As QFile::rename(): gives \a from the name \a to, over nothing that stands there, and for good.
///
/// Where the system renames no file that another program has open, as Windows does, both of them wait a
/// quarter of a second for that one, a virus scanner mostly, to let go. They have to be shorter than a tick.
[[nodiscard]] bool moveBeside(const QString &from, const QString &to);
