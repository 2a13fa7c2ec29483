#include "day_record.h"

#include "app/journal_words.h"
#include "app/ordinary_file.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
constexpr qint64 LargestTelegram = 64LL * 1024 * 1024; // bytes

/// The names in \a path but those of files that are only being written.
QStringList namesIn(const QString &path)
{
    const QStringList names = QDir(path).entryList(QDir::Files, QDir::Name);
    QStringList kept;
    for (const QString &name : names)
        if (!name.contains(QStringLiteral(".velda-")))
            kept << name;
    return kept;
}
} // namespace

CDayRecord::CDayRecord(const CDataDirectory &of, const QDate &day)
    : directory(of), date(day), procedure(of.procedure())
{
    counters = directory.counters();
    if (counters && counters->date != date)
        counters.reset();
    readNames();
    readJournals();
}

void CDayRecord::readNames()
{
    hasReceivedFiles = QFileInfo(directory.received(date)).isDir();
    hasSentFiles = QFileInfo(directory.sent(date)).isDir();
    receivedFiles = namesIn(directory.received(date));
    sentFiles = namesIn(directory.sent(date));
    queueFiles = namesIn(directory.queue());
}

void CDayRecord::readJournals()
{
    const CJournalFile before(directory.journal(date.addDays(-1)), date.addDays(-1));
    journal = CJournalFile(directory.journal(date), date);
    after = CJournalFile(directory.journal(date.addDays(1)), date.addDays(1));
    const QVector<CJournalEvent> earlier = eventsOf(before);
    const QVector<CJournalEvent> own = eventsOf(journal);
    findProcedure(earlier + own);
    events = earlier + own + eventsOf(after);
    for (CLineText *line : {&receivedLine, &sentLine}) {
        line->append(before);
        line->append(journal);
    }
    CLineText allReceived = receivedLine;
    CLineText allSent = sentLine;
    allReceived.append(after);
    allSent.append(after);
    received = allReceived.messages(procedure == CKS);
    sentText = allSent.messages(true);
}

void CDayRecord::findProcedure(const QVector<CJournalEvent> &earlier)
{
    for (const CJournalEvent &event : earlier) {
        if (event.kind != CJournalEvent::Started)
            continue;
        procedure = event.name == JournalWords::CentreWord     ? CKS
                    : event.name == JournalWords::SwitchedWord ? SKK
                                                               : Direct;
    }
}

bool CDayRecord::isOfDay(const QString &path) const
{
    return CJournalEvent::directoryOf(path) == nameOfDate(date);
}

bool CDayRecord::isLast(const CPlace &place) const
{
    for (const CJournalEvent &event : events)
        if (place < event.place)
            return false;
    return true;
}

std::optional<QString> CDayRecord::letters(const QString &path) const
{
    const std::optional<QByteArray> bytes = readOrdinary(path, LargestTelegram);
    if (!bytes)
        return std::nullopt;
    return lettersOf(QString::fromUtf8(*bytes));
}

QString CDayRecord::shownReceived(const QString &name) const
{
    return QDir(directory.path()).relativeFilePath(directory.received(date)) + QLatin1Char('/') + name;
}

QString CDayRecord::shownSent(const QString &name) const
{
    return QDir(directory.path()).relativeFilePath(directory.sent(date)) + QLatin1Char('/') + name;
}

bool isTranscript(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^s\\d{6}_?$"));
    return form.match(name).hasMatch();
}

QString withoutNewMark(const QString &name)
{
    return name.endsWith(QLatin1Char('_')) ? name.chopped(1) : name;
}
