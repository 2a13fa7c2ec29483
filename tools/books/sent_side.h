#pragma once

#include "day_record.h"
#include "day_report.h"
#include "number_row.h"

#include <QVector>

/// Holds the day's sent telegrams together: files, journal lines, numbers on the line, receipts and
/// answerbacks.
class CSentSide
{
public:
    CSentSide(const CDayRecord &record, CDayReport &report);

    void check();
    /// After check(): the counter as it stood at \a place.
    [[nodiscard]] int counterAt(const CPlace &place) const { return m_row.counterAt(place); }

private:
    /// A file on its way, from the line that says so to what became of it.
    struct Sending {
        QString name;
        CPlace place;
        QTime time;
        int number = -1;         ///< on the line or in the file's new name; -1: unknown
        bool isAccepted = false; ///< it stands among the sent ones
        bool isSettled = false;  ///< it is known what became of it
        CPlace settled;          ///< where that is said
        QString target;          ///< the file's new name
        QString directory;       ///< the date directory of an accepted one
    };
    void collect();
    void takeEvent(int at);
    void settle(const CJournalEvent &event, bool isAccepted);
    void findNumbers();
    void numberRow();
    void checkAccepted(const Sending &sending);
    void checkReceipt(const Sending &sending);
    void checkText(const Sending &sending);
    void checkUnsettled(const Sending &sending);
    void checkFiles();
    void checkTwice();
    void checkCounter();
    [[nodiscard]] bool hasReceipt(const Sending &sending) const;
    [[nodiscard]] bool isElsewhere(const QString &name) const;
    [[nodiscard]] bool isDelivered(const Sending &sending) const;

    const CDayRecord &m_record;
    CDayReport &m_report;
    CLineText m_line;
    CNumberRow m_row;
    QVector<Sending> m_sendings; ///< those begun or accepted on the day, in order
};
