#include "app/run/leftovers.h"

#include "app/options.h"
#include "app/state.h"
#include "records/draft_keeper.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace
{
/// The end of a temporary file's name, and what QSettings adds to it.
const QString Own = QStringLiteral("\\.velda-[0-9a-f]{8}(\\.lock|\\.[A-Za-z]{6})?");
/// The end that former versions left to Qt: six letters. A word in one case, "backup", may be an operator's.
const QString Former = QStringLiteral("\\.(?![A-Za-z]?[a-z]+$)(?![A-Z]+$)[A-Za-z]{6}");
const QString FormerDraft = QStringLiteral("\\.new(\\.lock)?");

QString anyOf(const QStringList &patterns)
{
    return QLatin1Char('(') + patterns.join(QLatin1Char('|')) + QLatin1Char(')');
}

/// Removes the files of \a directory whose names are \a name with one of \a ends behind it.
void sweep(const QString &directory, const QString &name, const QStringList &ends)
{
    const QRegularExpression leftover(QRegularExpression::anchoredPattern(anyOf({name}) + anyOf(ends)));
    QDir dir(directory);
    for (const QString &found : dir.entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Unsorted))
        if (leftover.match(found).hasMatch())
            dir.remove(found);
}

void sweepIni(const QString &path)
{
    const QFileInfo file(path);
    sweep(file.path(), QRegularExpression::escape(file.fileName()),
          {Own, Former, FormerDraft, QStringLiteral("\\.new") + Former});
}

QStringList dayDirectories(const QString &root)
{
    static const QRegularExpression day(QStringLiteral("^\\d{8}$"));
    QStringList paths;
    const QDir dir(root);
    for (const QString &name : dir.entryList(QDir::Dirs | QDir::NoSymLinks, QDir::Unsorted))
        if (day.match(name).hasMatch())
            paths << dir.filePath(name);
    return paths;
}

void sweepDays(const QString &root, const QString &formerName)
{
    for (const QString &directory : dayDirectories(root)) {
        sweep(directory, QStringLiteral(".+"), {Own});
        sweep(directory, formerName, {Former});
    }
}

/// Whether a file \a name of the queue stands among the sent ones of some day, under its number.
bool isAmongSent(const QString &queue, const QString &name)
{
    const QRegularExpression sent(
        QRegularExpression::anchoredPattern(QRegularExpression::escape(name) + QStringLiteral("\\.\\d{3}")));
    const QStringList days = dayDirectories(queue);
    return std::any_of(days.begin(), days.end(), [&sent](const QString &day) {
        return !QDir(day).entryList(QDir::Files, QDir::Unsorted).filter(sent).isEmpty();
    });
}

/// Removes the record in the queue of each telegram that stands among the sent ones: the process ended
/// between the two steps that file one. Alone it would wait for the next telegram of that name.
void sweepRecordsOfSent(const QString &queue)
{
    static const QRegularExpression record(QStringLiteral("^(\\d{8}.{4})\\.dat$"));
    QDir dir(queue);
    for (const QString &found : dir.entryList(QDir::Files | QDir::NoSymLinks, QDir::Unsorted)) {
        const QString name = record.match(found).captured(1);
        if (!name.isEmpty() && !dir.exists(name) && isAmongSent(queue, name))
            dir.remove(found);
    }
}
} // namespace

void sweepLeftovers()
{
    const QString transcript = QStringLiteral("s\\d{6}");
    sweepIni(Options.appPath + Options.iniFileName);
    sweepIni(Options.stateFileName);
    sweep(Options.appPath, QRegularExpression::escape(CDraftKeeper::fileName), {Own});
    sweep(State.pathPrt(), QStringLiteral("\\d{8}\\.prt"), {Own, Former});
    sweepDays(State.pathInp(), transcript + QStringLiteral("|\\d{8}.+"));
    sweepDays(State.pathOut(), transcript);
    // The queue, where others put their files: of the program's own are side-car records, and telegrams that
    // are forwarded.
    sweep(State.pathOut(), QStringLiteral(".*"), {Own});
    sweep(State.pathOut(), QStringLiteral("(.{12}(\\.[b\\d].*)?)?\\.dat"), {Former});
    sweepRecordsOfSent(State.pathOut());
}
