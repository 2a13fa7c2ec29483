#include "app/system_path_win.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr int ShortPath = 248; // what a directory's path may have, so that a name of 8.3 fits behind it
const QString Long = QStringLiteral("\\\\?\\");
const QString LongOfMachine = QStringLiteral("\\\\?\\UNC\\");
const QString Machine = QStringLiteral("\\\\");
const QString Device = QStringLiteral("\\\\.\\");
} // namespace

std::wstring systemPath(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    if (native.startsWith(Long) || native.startsWith(Device))
        return native.toStdWString();
    const QString whole = QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (whole.size() < ShortPath)
        return native.toStdWString();
    if (whole.startsWith(Machine))
        return (LongOfMachine + whole.mid(Machine.size())).toStdWString();
    return (Long + whole).toStdWString();
}
