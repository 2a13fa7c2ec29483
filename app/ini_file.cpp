#include "app/ini_file.h"

#include "app/ordinary_file.h"
#include "app/whole_file.h"

#include <QFile>
#include <QSettings>

namespace
{
constexpr qint64 LargestIni = 16LL * 1024 * 1024; // bytes; a hundred thousand subscribers have room

QByteArray contentOf(const QString &path)
{
    return readOrdinary(path, LargestIni).value_or(QByteArray());
}

/// Without a sync: the draft has no worth of its own, and isComplete() looks at what became of it.
bool writeDraft(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// Whether \a content holds \a keys keys to their ends. QSettings does not notice a disk that runs full under
/// it; what it wrote then is a head of the whole. Each key stands in one line.
bool isComplete(const QByteArray &content, int keys)
{
    int found = 0;
    for (const QByteArray &line : content.split('\n'))
        if (!line.trimmed().isEmpty() && !line.startsWith('['))
            ++found;
    return found == keys && (content.isEmpty() || content.endsWith('\n'));
}

/// Lets \a change work on the draft. Empty if that could not be written whole.
QByteArray changed(const QString &draft, const std::function<void(QSettings &)> &change)
{
    QSettings file(draft, QSettings::IniFormat);
    change(file);
    file.sync();
    const QByteArray content = contentOf(draft);
    return isComplete(content, file.allKeys().size()) ? content : QByteArray();
}
} // namespace

void readIni(const QString &path, const std::function<void(QSettings &)> &take)
{
    const bool readable = readOrdinary(path, LargestIni).has_value();
    QSettings file(readable ? path : temporaryName(path), QSettings::IniFormat);
    take(file);
}

// QSettings locks what it writes by a file beside it. A process killed at the wrong moment leaves that lock
// without an owner, and the next one to lock the same name waits for half a minute. No draft has the name of
// another, and so none meets a lock; that two processes write the file is the instance lock's to forbid.
bool rewriteIni(const QString &path, const std::function<void(QSettings &)> &change)
{
    const QString draft = temporaryName(path);
    const bool drafted = writeDraft(draft, contentOf(path));
    const QByteArray content = drafted ? changed(draft, change) : QByteArray();
    const bool replaced = !content.isEmpty() && replaceWholeFile(path, content);
    QFile::remove(draft);
    return replaced;
}
