#pragma once

#include "records/journal_lines.h"
#include "records/journal_types.h"
#include "text/scan_position.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QObject>
#include <QString>
#include <QStringList>

/// The operator's day book: everything received, sent and noted, as one list of lines, one file per day.
/// A service line never splits a telegram's line: it waits for the end of the running one.
///
/// A line is a sequence of characters in which one with a code below 10 is a mark: what follows is of that
/// type (ProtocolTypes), until the next mark. The file holds the lines joined by a line feed, in UTF-8. It
/// only grows, also through a kill: see Save(). Main thread, without a lock; the firmware loader, which
/// alone writes from another thread, does so while the main window is held.
class CProtocol : public QObject
{
    Q_OBJECT

public:
    CProtocol();

    /// Sets fileName to the book of \a date.
    void setFileDate(const QDate &date);
    /// Opens the book of the clock's date and reads what it holds.
    void Load();
    /// Brings the file to the state of the list; an append, if the file is what the last Save() left. If it
    /// is not, and with rewriteAll, the file is compared: one that reads like the head of the list is
    /// continued, any other is replaced whole through a temporary file. What Load() has read counts as
    /// written. What cannot be written now is written by a later call. With the option protocolFileNoClose
    /// the file stays open, and what is new reaches the disk at the first Save() after flushRequested.
    void Save();
    /// Hands to the disk what the book that is kept open still holds back. What fails is made good by the
    /// next Save().
    void flush();
    /// Appends line text, then reports and saves.
    void add(const QString &text, ProtocolTypes type);
    /// Appends one character, with neither report nor save. CR is stored as "<", LF as ">"; ">" ends the
    /// line and lets a waiting service line in.
    void add(QChar c, ProtocolTypes type);
    /// Puts a whole line into the list at once.
    void addServiceString(const QString &text, ProtocolTypes type);
    /// The normal way to note an event: adds the time; with \a cached it waits for the running line's end.
    /// Only one can wait: a second one pushes both out, cutting the running line.
    void addCacheServiceString(const QString &text, ProtocolTypes type, bool cached);

    /// Path of the book of \a date.
    [[nodiscard]] static QString pathForDate(const QDate &date);
    /// The lines of a book without white space at their ends; empty if it is missing or unreadable.
    [[nodiscard]] static QStringList readLines(const QString &path);

signals:
    void Changed();
    void NewLine();

public:
    QString fileName = QStringLiteral("startup.prt"); ///< path of today's book
    QFile file;                                       ///< the book while it is kept open
    bool rewriteAll = false; ///< the next Save() looks at the whole file, then closes it
    QString writeError;      ///< why the disk did not take what Save() or flush() gave it last; empty: it did
    bool behind = false; ///< the last Save() left lines in memory. Of a book that cannot be opened nothing
                         ///< is reported, and it has no writeError of its own
    bool flushRequested = false; ///< the next Save() flushes the book that is kept open
    CJournalLines lines;         ///< today's; only the last one may grow. Nobody keeps a copy of it or of
                                 ///< its last line: each character added would then copy it
    QString cachedText;          ///< a service line that waits for the end of the running line
    ProtocolTypes cachedType = ProtocolNone; ///< its type; ProtocolNone: nothing waits
    int newLineCount = 0;                    ///< lines begun by the running add()
    int lineWidthLimit = 0;                  ///< text characters; 0 is no limit

private:
    /// What is known of the last line, so that a character costs the same in a long one.
    struct Tail {
        int line = -1;       ///< which one it is
        CScanPosition chars; ///< how much of it has been looked at
        QChar type;          ///< of the text at its end
        int textCount = 0;   ///< characters that count for lineWidthLimit
    };
    /// Where the file ends in the list.
    struct Written {
        QString path;       ///< empty: nothing is known
        CScanPosition line; ///< the last line that the file holds
        int chars = 0;      ///< and how much of it
        qint64 bytes = 0;
        bool ended = false;  ///< and a line feed behind it
        bool closed = false; ///< what the list adds to this line cannot be added there
        QDateTime stamp;     ///< the file's time of change when it was last closed
    };

    void beginLine(QChar c, ProtocolTypes type);
    void endLine();
    void appendToLast(QChar c, ProtocolTypes type);
    const Tail &tail();

    [[nodiscard]] bool listAsWritten() const;
    [[nodiscard]] bool diskAsWritten() const;
    [[nodiscard]] bool diskHasAllBut(qint64 heldBack) const;
    [[nodiscard]] QByteArray newBytes() const;
    bool bringUpToDate();
    bool matchFile();
    bool appendNew();
    bool appendToFile(const QByteArray &bytes);
    bool flushed(QFile &book);
    void closeFile();
    void noteWritten(qint64 bytes);
    void noteStamp();

    Tail m_tail;
    Written m_written;
};

/// A file's name or path as the journal shows it: "?" for each character below 32. One of them as it stands
/// would end the line or pass for a mark, and whoever may drop a file could write into the journal.
[[nodiscard]] QString shownName(QString name);

extern CProtocol Log;
