#pragma once

#include <QString>

#include <functional>

class CFileInfo;

/// What the operator does with a file of the queue, given by its path. A failure changes nothing, makes one
/// journal line and is told by false or an empty path. Main thread.

/// Whether number and time of all records stay as they are: outside a switched channel, and while it is in
/// use.
[[nodiscard]] bool recordsAreLocked();
/// Whether the line procedure is sending the file.
[[nodiscard]] bool isUnderWay(const QString &path);
/// Removes the file, then its record. One that is being sent goes out whole if the line has its text already.
bool removeQueueFile(const QString &path);
/// Changes the file's record. A sending under way takes the change over, as it writes the record at its end.
bool changeQueueRecord(const QString &path, const std::function<void(CFileInfo &)> &change);
/// Gives a file that failed with the centre its former name, which the queue takes; the new path. Empty, too,
/// if the name has no ".b" and more behind it.
[[nodiscard]] QString restoreFailedFile(const QString &path);
