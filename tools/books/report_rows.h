#pragma once

#include "day_report.h"

#include <QString>
#include <QVector>

/// A line of a day's table: what it tells, and of each direction.
struct CReportRow {
    QString title;
    QString received;
    QString sent;
};

/// The table of a day, for every form in which it is shown.
[[nodiscard]] QVector<CReportRow> rowsOf(const CDayReport &report);
/// "ручной 20 мин, автоматический 1420 мин"; empty if nothing is known.
[[nodiscard]] QString shownMinutes(const QMap<QString, int> &seconds);
/// "10:15:02–10:16:40, 1 мин 38 с".
[[nodiscard]] QString shownOutage(const COutage &outage);
/// "Книги за 22.11.2026 (ЦКС): сходятся".
[[nodiscard]] QString shownHeading(const CDayReport &report);
