#include "procedures/queue_file.h"

#include "app/journal_words.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "procedures/telegram_files.h"
#include "records/file_info.h"
#include "text/utils.h"

#include <QFile>
#include <QFileInfo>

namespace
{
void tellTrouble(const QString &words, const QString &path)
{
    noteEvent(words + shownName(path), ProtocolError);
}
} // namespace

bool recordsAreLocked()
{
    return Options.processMode != SKK || State.tlgMode == ModeOpen;
}

bool isUnderWay(const QString &path)
{
    return State.fileInProgress && path == queuePath(State.currentFile);
}

bool removeQueueFile(const QString &path)
{
    if (!QFile::remove(path)) {
        // The record stays: without it the telegram would go to the centre.
        tellTrouble(QStringLiteral("Ошибка удаления "), path);
        return false;
    }
    CFileInfo::Remove(path);
    syncNames(path); // what came back would be sent
    noteEvent(JournalWords::Removed + shownName(path));
    return true;
}

bool changeQueueRecord(const QString &path, const std::function<void(CFileInfo &)> &change)
{
    if (!QFileInfo::exists(path)) {
        // A record alone would wait for the next file of that name.
        tellTrouble(QStringLiteral("Нет файла "), path);
        return false;
    }
    CFileInfo record;
    (void)record.Load(path); // without one, its defaults are what is changed
    change(record);
    if (!record.Save(path)) {
        tellTrouble(QStringLiteral("Не получилось сохранить параметры файла "), path);
        return false;
    }
    if (isUnderWay(path))
        change(State.sendInfo);
    return true;
}

QString restoreFailedFile(const QString &path)
{
    const QFileInfo file(path);
    const int mark = file.fileName().indexOf(QStringLiteral(".b"));
    if (mark <= 0)
        return QString();
    const QString name = file.fileName().left(mark);
    return CUtils::renameFile(path, State.pathOut(), name, false) ? queuePath(name) : QString();
}
