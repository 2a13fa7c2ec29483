#pragma once

#include "data_directory.h"
#include "journal_event.h"
#include "journal_file.h"
#include "line_text.h"

#include <QStringList>

#include <optional>

/// Everything on the disk that tells of one day: its journal with those of the days around it, as the turn of
/// the day may fall between an event and its line, and the names of its files.
class CDayRecord
{
public:
    CDayRecord(const CDataDirectory &directory, const QDate &date);

    const CDataDirectory &directory;
    QDate date;
    CJournalFile journal;
    CJournalFile after;             ///< of the next day
    QVector<CJournalEvent> events;  ///< of the three days
    QVector<CLineMessage> received; ///< messages of the line, of the three days
    QVector<CLineMessage> sentText;
    CLineText receivedLine{ProtocolReceived}; ///< of the day before and the day
    CLineText sentLine{ProtocolSent};
    Procedure procedure;       ///< by the journal's last word of it, or the settings
    QStringList receivedFiles; ///< names in the day's directory, without what is being written
    QStringList sentFiles;
    QStringList queueFiles;
    bool hasReceivedFiles = false; ///< there is such a directory
    bool hasSentFiles = false;
    std::optional<CDataDirectory::Counters> counters; ///< if they belong to the day

    /// The day is not over, and a workstation may be at work on it.
    [[nodiscard]] bool isLive() const { return counters && directory.isLocked(); }
    /// Whether \a path, as the journal has it, lies in the day's directory of \a side ("inp" by its root).
    [[nodiscard]] bool isOfDay(const QString &path) const;
    /// Nothing but the program's end came behind \a place, so what it began may still be going on.
    [[nodiscard]] bool isLast(const CPlace &place) const;

    /// The letters of a stored telegram; nothing if the file has gone.
    [[nodiscard]] std::optional<QString> letters(const QString &path) const;

    /// Names as the messages show them.
    [[nodiscard]] QString shownReceived(const QString &name) const;
    [[nodiscard]] QString shownSent(const QString &name) const;

private:
    void readJournals();
    void readNames();
    void findProcedure(const QVector<CJournalEvent> &earlier);
};

/// Whether \a name is that of a stored connection.
[[nodiscard]] bool isTranscript(const QString &name);
/// \a name without the mark of a new file.
[[nodiscard]] QString withoutNewMark(const QString &name);
