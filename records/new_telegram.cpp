#include "records/new_telegram.h"

#include "app/clock.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "records/file_info.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "text/utils.h"

#include <QDir>

namespace
{
constexpr int NumbersOfADay = 1000;

/// A telegram that has failed bears more behind its name, and will bear the name alone again; a record that
/// is left over would become that of the new telegram.
bool isTaken(const QString &name)
{
    return !QDir(State.pathOut())
                .entryList({name, name + QStringLiteral(".*")},
                           QDir::AllEntries | QDir::Hidden | QDir::System)
                .isEmpty();
}

QString nameOf(const QString &category, int number)
{
    return Time.yyyyMMdd + CUtils::categoryLetter(category) + CUtils::StringNNN(number);
}

bool writeTelegram(const QString &path, const QString &text, const CFileInfo *record)
{
    // The record comes first: a telegram without one would be taken for the centre's.
    if (record != nullptr && !record->Save(path))
        return false;
    if (writeNewFile(path, upperMTK2(text).toUtf8()))
        return true;
    if (record != nullptr)
        CFileInfo::Remove(path);
    return false;
}
} // namespace

std::optional<QString> queueTelegram(const QString &category, const QString &text, const CFileInfo *record)
{
    int number = State.EditorN + 1;
    while (isTaken(nameOf(category, number)) && number < State.EditorN + NumbersOfADay)
        ++number;
    const QString name = nameOf(category, number);
    const QString path = State.pathOut() + QDir::separator() + name;
    if (isTaken(name) || !writeTelegram(path, text, record)) {
        Log.addCacheServiceString(QStringLiteral("Телеграмма не поставлена в очередь, не записан файл ") +
                                      shownName(path),
                                  ProtocolError, true);
        return std::nullopt;
    }
    State.EditorN = number;
    State.Save();
    return name;
}
