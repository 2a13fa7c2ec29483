#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// What a tap has seen of a line. As a file it is UTF-8 text, one event a line, fields parted by blanks:
///
///     # a line record; behind "#" is what a reader may want to know
///     0.000000 1 W open
///     0.104233 1 F 16
///     0.104890 1 W 16 BF
///     9.500000 1 F close
///
/// the seconds since the record's beginning with six decimals, never falling; the connection, numbered from
/// 1 as they open; the side, W for the workstation and F for the far end; and what it did: "open", "close",
/// or the bytes that came from it at once, in hexadecimal. Empty lines tell nothing.
struct LineRecord {
    enum Side { Workstation, FarEnd };
    enum Kind { Open, Close, Bytes };

    struct Event {
        qint64 us = 0; ///< since the record's beginning
        int connection = 1;
        Side side = Workstation;
        Kind kind = Bytes;
        QByteArray bytes; ///< of Bytes, never empty there
    };

    QVector<Event> events;

    /// Reads a record; empty, with the number of the line and what is wrong in \a error, for a line that is
    /// none, time that falls, a connection used before its opening or after its end, or two at once.
    [[nodiscard]] static std::optional<LineRecord> parse(const QByteArray &text, QString &error);
};

/// \a event as a line of the file, without its end.
[[nodiscard]] QByteArray recordLine(const LineRecord::Event &event);
/// \a us as seconds with six decimals.
[[nodiscard]] QString secondsOf(qint64 us);
