#pragma once

#include "tests/support/desk.h"

#include <QRegularExpression>
#include <QSettings>

#include <algorithm>

/// What the targets of settings files have to know of the toolkit's ways with them.
namespace IniFiles
{
/// The keys with a group and a name; the toolkit writes others in forms of its own.
inline QStringList plainKeys(const QSettings &file)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z][A-Za-z0-9_]*/[A-Za-z0-9_]+$"));
    return file.allKeys().filter(plain);
}

/// Whether \a file has a key without a group or a name. The toolkit writes such a one with a backslash at its
/// end, which it then takes together with the "=" behind it, and loses a letter or the key at each writing;
/// neither the program nor anybody writes such.
inline bool hasLosableKey(const QSettings &file)
{
    const QStringList keys = file.allKeys();
    return std::any_of(keys.begin(), keys.end(),
                       [](const QString &key) { return key.startsWith(u'/') || key.endsWith(u'/'); });
}

/// \a content in place of the file \a former, under a name of its own: the toolkit remembers by name, length
/// and time what it has read.
inline QString renamed(const Desk &desk, const QByteArray &content, const QString &former)
{
    static int count = 0;
    QFile::remove(desk.path(former));
    const QString name = QStringLiteral("fuzz_%1.ini").arg(++count);
    desk.write(name, content);
    return name;
}
} // namespace IniFiles
