#pragma once

#include "records/journal_types.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QTime>
#include <QVector>

/// A line of a journal's file, apart by the types of its text.
struct CJournalLine {
    struct Piece {
        ProtocolTypes type = ProtocolNone;
        QString text; ///< "<" stands for a carriage return, ">" for a line feed
    };
    int number = 0; ///< from 1
    QVector<Piece> pieces;

    [[nodiscard]] bool isService() const; ///< one event, with its time in front
    [[nodiscard]] QTime time() const;     ///< of a service line
    [[nodiscard]] QString words() const;  ///< of a service line, behind its time
};

/// One day's journal as it stands on the disk at the moment of reading.
class CJournalFile
{
public:
    CJournalFile() = default;
    /// Reads \a path. A file that grows meanwhile may end in half a line, which is taken as it is.
    CJournalFile(const QString &path, const QDate &day);

    QDate date;
    QString name;        ///< without directories
    bool exists = false; ///< there is such a file
    bool isRead = false; ///< and its content is here
    QVector<CJournalLine> lines;
    QVector<int> damaged;  ///< numbers of lines with bytes that no journal has: no UTF-8, or zeros
    bool endsOpen = false; ///< the last line waits for more

private:
    void takeContent(const QByteArray &content);
    void takeLine(const QByteArray &bytes, int number, bool isLast);
};
