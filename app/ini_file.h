#pragma once

#include <QString>

#include <functional>

class QSettings;

/// Lets \a take read the keys of the .ini file \a path. A file that is missing, too large to be one, or none
/// of the ordinary kind, has no keys.
void readIni(const QString &path, const std::function<void(QSettings &)> &take);

/// Changes the keys of the .ini file \a path by \a change and replaces the file as a whole: a kill at any
/// moment or a full disk leaves the old file or the new one. Keys that \a change does not touch stay. False
/// if the file could not be written; the old one then stands.
bool rewriteIni(const QString &path, const std::function<void(QSettings &)> &change);
