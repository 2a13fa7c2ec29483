#pragma once

#include "day_record.h"
#include "day_report.h"
#include "number_row.h"

#include <QMultiMap>

/// Holds the day's received telegrams together: files, journal lines and what came on the line.
class CReceivedSide
{
public:
    CReceivedSide(const CDayRecord &record, CDayReport &report);

    /// Fills the report's side and its disagreements.
    void check();
    /// After check(): the counter as it stood at \a place.
    [[nodiscard]] int counterAt(const CPlace &place) const { return m_row.counterAt(place); }

private:
    void collectSaved();
    void checkFile(const QString &name);
    void checkSavedGone();
    void checkCounter();
    // What came on the line must be stored, by the way in which the procedure knows it again
    void checkNumbered();
    void checkMarked();
    void checkFound();
    void reportLost(const CPlace &place, const QString &what);
    [[nodiscard]] CPlace placeOfNumber(int number, const QString &letters) const;
    [[nodiscard]] bool waits(const CPlace &place) const;
    [[nodiscard]] QString refusalBehind(const CPlace &place) const;
    void noteResets();

    const CDayRecord &m_record;
    CDayReport &m_report;
    CLineText m_line;
    CNumberRow m_row;
    QMultiMap<QString, CJournalEvent> m_saved; ///< by the file's name
    QMultiMap<QString, QString> m_letters;     ///< of the files, with their names
};
