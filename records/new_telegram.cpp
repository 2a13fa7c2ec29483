#include "records/new_telegram.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "records/file_info.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "text/utils.h"

#include <QDir>
#include <QSet>

#include <utility>

namespace
{
constexpr int NumbersOfADay = 1000;
constexpr int ScanAfterQueueing = 2; // ticks

/// What a name has around the number of the day.
struct NameParts {
    QString letter;
    QString stamp; ///< with its "."; empty if the name holds no time
};

NameParts partsOf(const SendOrder &order)
{
    NameParts parts;
    parts.letter = order.guaranteed ? QStringLiteral("g") : CUtils::categoryLetter(order.category);
    if (Options.processMode == Direct)
        parts.stamp = order.sendTime.toString(QStringLiteral(".yyMMdd_hhmmss"));
    return parts;
}

/// The names under which something of today stands in the outgoing directory, looked at once for a whole list
/// of numbers. A telegram that has failed bears more behind its name, and will bear the name alone again; a
/// record that is left over would become that of the new telegram.
class TakenNames
{
public:
    TakenNames()
    {
        const QStringList present =
            QDir(State.pathOut())
                .entryList({Time.yyyyMMdd + QLatin1Char('*')}, QDir::AllEntries | QDir::Hidden | QDir::System,
                           QDir::Unsorted);
        for (const QString &name : present)
            add(name);
    }
    void add(const QString &name) { m_names << baseOf(name); }
    [[nodiscard]] bool has(const QString &name) const { return m_names.contains(baseOf(name)); }

private:
    static QString baseOf(const QString &name) { return name.section(QLatin1Char('.'), 0, 0).toLower(); }

    QSet<QString> m_names;
};

QString nameOf(const QString &letter, int number)
{
    return Time.yyyyMMdd + letter + CUtils::StringNNN(number);
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

/// Writes the telegram that bears \a number. The number is kept first: a kill on the way costs a number,
/// where behind the file it would leave one to be used twice.
bool writeNumbered(const QString &path, int number, const QString &text, const CFileInfo *record)
{
    const int former = std::exchange(State.EditorN, number);
    State.Save();
    if (writeTelegram(path, text, record))
        return true;
    State.EditorN = former;
    State.Save();
    return false;
}

/// As queueTelegram(), under a name that is not \a taken. \a whose ends the journal line of a failure.
std::optional<QString> queueOne(TakenNames &taken, const NameParts &parts, const QString &text,
                                const CFileInfo *record, const QString &whose = QString())
{
    int number = State.EditorN + 1;
    while (taken.has(nameOf(parts.letter, number)) && number < State.EditorN + NumbersOfADay)
        ++number;
    const QString name = nameOf(parts.letter, number) + parts.stamp;
    const QString path = State.pathOut() + QDir::separator() + name;
    if (taken.has(name) || !writeNumbered(path, number, text, record)) {
        Log.addCacheServiceString(QStringLiteral("Телеграмма не поставлена в очередь, не записан файл ") +
                                      shownName(path) + whose,
                                  ProtocolError, true);
        return std::nullopt;
    }
    taken.add(name);
    return name;
}

CFileInfo recordFor(const QString &number, const SendOrder &order)
{
    CFileInfo record;
    record.number = number;
    record.trys = Options.sendTrys;
    record.toCKS = order.toCKS;
    record.sendTime = order.sendTime;
    return record;
}

Queued queueForNumbers(const SendOrder &order, const QString &text)
{
    TakenNames taken;
    Queued queued;
    queued.unsent = order.numbers;
    while (!queued.unsent.isEmpty()) {
        const CFileInfo record = recordFor(queued.unsent.constFirst(), order);
        const QString whose = QStringLiteral(", номера: ") + queued.unsent.join(QLatin1Char(','));
        const std::optional<QString> name = queueOne(taken, partsOf(order), text, &record, whose);
        if (!name)
            break;
        queued.names << *name;
        queued.unsent.removeFirst();
    }
    if (order.numbers.size() > 1 && !queued.names.isEmpty()) {
        ++State.EditorN; // parts one list from the next
        State.Save();
    }
    return queued;
}

Queued queueAlone(const SendOrder &order, const QString &text)
{
    TakenNames taken;
    Queued queued;
    if (const std::optional<QString> name = queueOne(taken, partsOf(order), text, nullptr))
        queued.names << *name;
    return queued;
}
} // namespace

std::optional<QString> queueTelegram(const QString &category, const QString &text, const CFileInfo *record)
{
    TakenNames taken;
    return queueOne(taken, {CUtils::categoryLetter(category), QString()}, text, record);
}

Queued queueTelegram(const SendOrder &order, const QString &text)
{
    const Queued queued = Options.processMode == SKK ? queueForNumbers(order, text) : queueAlone(order, text);
    if (!queued.names.isEmpty())
        State.scanCountdown = ScanAfterQueueing;
    return queued;
}
