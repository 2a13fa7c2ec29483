#pragma once

#include <QString>
#include <QStringList>

/// A call of the workstation's that changes the disk, and what becomes of it; see disk_calls.cpp.
struct Point {
    QString procedure;  ///< of Day
    QString kind;       ///< "write"
    int number = 0;     ///< among its kind, from 1
    QString how;        ///< "before", "half", "after", or the name of an error
    bool lasts = false; ///< the disk is bad from then on for a while

    [[nodiscard]] bool isPowerLoss() const { return how == QLatin1String("power"); }
    [[nodiscard]] bool kills() const { return !how.startsWith(QLatin1Char('E')); }
    [[nodiscard]] QString name() const; ///< "direct write 12 half"
    /// Of the words of a name; without a procedure if they are none.
    [[nodiscard]] static Point of(const QStringList &words);
};

[[nodiscard]] QStringList callKinds();
/// What can become of a call of \a kind: the deaths, then the errors, once and for a while.
[[nodiscard]] QStringList deathsAt(const QString &kind);
[[nodiscard]] QStringList errorsAt(const QString &kind);

struct Outcome {
    bool reached = false; ///< else the day has ended without such a call
    QStringList wrong;
    QString log; ///< the calls of the first run, one a line
};
/// Passes the day with that point in it; one of no kind is passed in peace.
[[nodiscard]] Outcome pass(const Point &point);
