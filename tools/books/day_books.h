#pragma once

#include "data_directory.h"
#include "day_report.h"

class CDayRecord;

/// Reconciles the books of one day. A workstation may be at work on them: where they seem to disagree, they
/// are read again after a while, and what holds is reported.
class CDayBooks
{
public:
    explicit CDayBooks(const CDataDirectory &directory) : m_directory(directory) {}

    /// Why the day's files cannot be read; empty: they can.
    [[nodiscard]] QString fault(const QDate &date) const;
    [[nodiscard]] CDayReport report(const QDate &date) const;

    int pauseMilliseconds = 1500; ///< before a second look
    int looks = 3;                ///< at most

private:
    [[nodiscard]] CDayReport look(const QDate &date) const;
    void reconcile(const CDayRecord &record, CDayReport &report) const;
    [[nodiscard]] bool hasExpired(const QDate &date) const;

    const CDataDirectory &m_directory;
};
