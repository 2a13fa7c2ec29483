#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

/// Commands at their times, one a line: "12:30 command" or "12:30:15 command" at that time of each day,
/// "+10 command" so many seconds after the start. Empty lines and those that begin with ";" tell nothing.
class Scenario
{
public:
    /// False if the file cannot be read or a line is not understood; then it is empty.
    [[nodiscard]] bool load(const QString &path);
    [[nodiscard]] bool parse(const QString &text);
    /// What has become due since the last call, in order of the lines.
    [[nodiscard]] QStringList due(const QDateTime &now);

private:
    struct Line {
        int afterSeconds = -1; // since the start; -1 for a time of day
        QTime at;
        QString command;
    };
    [[nodiscard]] static bool read(const QString &text, Line &line);

    QVector<Line> m_lines;
    QDateTime m_start;
    QDateTime m_last;
};
