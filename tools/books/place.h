#pragma once

#include <QDate>
#include <QString>

/// A line of some day's journal. Places are in the order of what happened.
struct CPlace {
    QDate date;
    int line = 0; ///< from 1; 0: no line

    [[nodiscard]] bool isNowhere() const { return line == 0; }
    [[nodiscard]] bool operator<(const CPlace &other) const
    {
        return date != other.date ? date < other.date : line < other.line;
    }
    [[nodiscard]] bool operator==(const CPlace &other) const
    {
        return date == other.date && line == other.line;
    }
    /// "20261122.prt:17".
    [[nodiscard]] QString shown() const
    {
        return date.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".prt:") + QString::number(line);
    }
};
