// Any file as velda.ini: it is read; what was read is written, read and written again as the same, and what
// the program does not know stays.

#include "app/options.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/ini_files.h"
#include "tests/support/desk.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QSettings>

namespace
{
/// Whether the folders that the settings name lie beside the file: others are not made for a test.
bool staysInside(const QSettings &settings)
{
    for (const char *key : {"PATH/pathInp", "PATH/pathOut", "PATH/pathPrt"}) {
        const QString path = settings.value(QLatin1String(key)).toString();
        if (path.contains(u'/') || path.contains(u'\\') || path.startsWith(u'.'))
            return false;
    }
    return true;
}

/// The keys that end with a shorter list of subscribers are the only ones that may go.
bool mayGo(const QString &key)
{
    return key.startsWith(QLatin1String("ABONENT"));
}

void checkKept(const QStringList &keys, const QStringList &written)
{
    const QSet<QString> present(written.begin(), written.end());
    for (const QString &key : keys)
        Fuzz::check(mayGo(key) || present.contains(key), "keys that the program does not know stay");
}

QByteArray saved(const Desk &desk)
{
    Options.Save();
    const QByteArray content = desk.read(Options.iniFileName);
    Fuzz::check(!content.isEmpty(), "settings are written whatever was read");
    return content;
}

/// Now and then: looking for them costs as much as reading a file.
void removeFolders(const Desk &desk)
{
    static int left = 0;
    if (left-- > 0)
        return;
    left = 100;
    for (const QString &name : desk.names(QString()))
        if (QFileInfo(desk.path(name)).isDir())
            QDir().rmdir(desk.path(name));
}

/// Writing, reading and writing again takes many times as long as reading alone. One input of four, always
/// the same ones, so that what was found is found again.
bool isWritten(const QByteArray &content)
{
    return qChecksum(content.constData(), uint(content.size())) % 4 == 0;
}

/// What was read is written, read and written again as the same, with the \a keys that were there before.
void checkWritten(const Desk &desk, const QStringList &keys)
{
    const auto subscribers = Options.abonents.size();
    const QByteArray once = saved(desk);
    Options.iniFileName = IniFiles::renamed(desk, once, Options.iniFileName);
    {
        const QSettings written(desk.path(Options.iniFileName), QSettings::IniFormat);
        checkKept(keys, written.allKeys());
        Options.Load(); // of what the toolkit has just read
    }
    Fuzz::check(Options.abonents.size() == subscribers, "subscribers stay");
    const QByteArray first = saved(desk); // the toolkit has brought damaged keys into its own form
    if (first == once)                    // a further round would be the same again
        return;
    Options.iniFileName = IniFiles::renamed(desk, first, Options.iniFileName);
    Options.Load();
    Fuzz::check(saved(desk) == first, "what was written reads as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Desk desk;
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    Options.iniFileName = IniFiles::renamed(desk, content + '\n', Options.iniFileName);
    QStringList keys;
    {
        const QSettings given(desk.path(Options.iniFileName), QSettings::IniFormat);
        if (!staysInside(given) || IniFiles::hasLosableKey(given))
            return 0;
        if (given.status() == QSettings::NoError) // of a damaged file the toolkit tells no keys for sure
            keys = IniFiles::plainKeys(given);
    }
    Options.Load();
    Fuzz::check(Options.processMode >= 0 && Options.processMode <= 3, "procedure");
    if (isWritten(content))
        checkWritten(desk, keys);
    removeFolders(desk);
    return 0;
}
