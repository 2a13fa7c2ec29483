#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the file \a path by \a content through a temporary file and a rename, so that a kill at any
/// moment leaves the old content or the new one. Where the directory takes no temporary file the content is
/// written over the old one in place instead. False if it could not be written; what stood there then stays,
/// in place perhaps in part. So does what is no file: a directory, a FIFO, a device, or a link to one.
bool replaceWholeFile(const QString &path, const QByteArray &content);

/// Makes the file \a path, which appears whole or not at all. False if it could not be written, or if
/// something of that name is there, which stays as it is.
[[nodiscard]] bool writeNewFile(const QString &path, const QByteArray &content);

/// A name beside \a path that no file bears yet, for what is to become it: \a path with ".velda-" and eight
/// hexadecimal digits. A file of such a name that a killed process left is nobody's.
[[nodiscard]] QString temporaryName(const QString &path);
