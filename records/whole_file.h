#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the file \a path by \a content through a temporary file and a rename, so that a kill at any
/// moment leaves the old content or the new one. Where the directory takes no temporary file, and for a
/// device, the content is written over the old one in place instead. False if it could not be written;
/// what stood there then stays, in place perhaps in part.
bool replaceWholeFile(const QString &path, const QByteArray &content);
