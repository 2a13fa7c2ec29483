#pragma once

#include "journal_file.h"
#include "place.h"

#include <QTime>
#include <QVector>

/// What a service line of the journal says happened. Lines that say nothing of telegrams, numbers, the link
/// or the program are no event.
struct CJournalEvent {
    enum Kind {
        Started,
        Ended,
        Manual,
        Automatic,
        ChannelMode,
        Saved,
        NotSaved,
        Found,
        Endless,
        Sending,
        Calling,
        Unreadable,
        Delivered,
        Renamed,
        RenamingFailed,
        Removed,
        CallSaved,
        CallNotSaved,
        CentreAnswered,
        CountersReset,
        CountersDiffer,
        ReceivedCorrected,
        OperatorSetReceived,
        OperatorSetSent,
        LinkUp,
        LinkDown
    };
    Kind kind = Started;
    CPlace place;
    QTime time;
    QString name;   ///< of the file, with "/" as separator; or the words that the line ends with
    QString target; ///< of a renaming
    int figure = 0; ///< the counter's new value

    /// The file's name without its directories.
    [[nodiscard]] QString fileName() const { return name.section(QLatin1Char('/'), -1); }
    [[nodiscard]] QString targetName() const { return target.section(QLatin1Char('/'), -1); }
    /// The date directory of \a path; empty if the file stands in none.
    [[nodiscard]] static QString directoryOf(const QString &path)
    {
        return path.section(QLatin1Char('/'), -2, -2);
    }
};

/// The events of \a journal in its order.
[[nodiscard]] QVector<CJournalEvent> eventsOf(const CJournalFile &journal);
