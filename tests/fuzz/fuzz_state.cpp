// Any file as velda_state.ini: figures within a day's reach, the same after each writing, and foreign keys
// stay.

#include "app/options.h"
#include "app/state.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/ini_files.h"
#include "tests/support/desk.h"

#include <QSet>
#include <QSettings>

#include <array>

namespace
{
std::array<int, 7> counters()
{
    return {State.PK_in,  State.PK_out,  State.CKS_in, State.CKS_out,
            State.SKK_in, State.SKK_out, State.EditorN};
}

/// The figure of the file told in another way.
int figureOf(const QSettings &file, const char *key)
{
    bool ok = false;
    const int figure = file.value(QStringLiteral("STATE/") + QLatin1String(key)).toString().toInt(&ok);
    return ok && figure >= 0 && figure < 1000000 ? figure : 0;
}

void checkRead(const QSettings &file)
{
    for (const int counter : counters())
        Fuzz::check(counter >= 0 && counter < 1000000, "a figure that a day can reach");
    const QVariant plain = file.value(QStringLiteral("STATE/PK_out"));
    if (plain.type() == QVariant::String)
        Fuzz::check(State.PK_out == figureOf(file, "PK_out"), "telegrams sent");
}

void checkKept(const QStringList &keys, const QStringList &written)
{
    const QSet<QString> present(written.begin(), written.end());
    for (const QString &key : keys)
        Fuzz::check(present.contains(key), "keys that the program does not know stay");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Desk desk;
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    Options.stateFileName = IniFiles::renamed(desk, content + '\n', Options.stateFileName);
    const QString name = Options.stateFileName;
    QStringList keys;
    {
        const QSettings given(desk.path(name), QSettings::IniFormat);
        if (given.status() == QSettings::NoError) // of a damaged file the toolkit tells no keys for sure
            keys = IniFiles::plainKeys(given);
        State.Load();
        checkRead(given);
        if (IniFiles::hasLosableKey(given))
            return 0;
    }
    const auto read = counters();
    const QString date = State.YYYYMMDD;
    const bool manual = State.manualMode;
    State.Save();
    const QByteArray first = desk.read(name);
    Options.stateFileName = IniFiles::renamed(desk, first, name);
    {
        const QSettings written(desk.path(Options.stateFileName), QSettings::IniFormat);
        checkKept(keys, written.allKeys());
        State.Load(); // of what the toolkit has just read
    }
    Fuzz::check(counters() == read && State.YYYYMMDD == date && State.manualMode == manual,
                "what was written reads as the same");
    if (first == content + '\n') // and was written as the same
        return 0;
    State.Save();
    Fuzz::check(!first.isEmpty() && desk.read(Options.stateFileName) == first,
                "a second writing changes nothing");
    return 0;
}
