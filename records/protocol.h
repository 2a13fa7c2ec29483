#pragma once

#include <QDate>
#include <QFile>
#include <QObject>
#include <QString>
#include <QStringList>

/// Kinds of journal text; the values stand in the file as type marks.
enum ProtocolTypes {
    ProtocolNone = 0,     ///< nothing
    ProtocolReceived = 1, ///< text from the line
    ProtocolSent = 2,     ///< text to the line
    ProtocolInfo = 3,     ///< event
    ProtocolError = 4,    ///< failure
    ProtocolOther = 5     ///< reserved by the view
};

/// The operator's day book: everything received, sent and noted, as one list of lines, one file per day.
/// A service line never splits a telegram's line: it waits for the end of the running one.
class CProtocol : public QObject
{
    Q_OBJECT

public:
    CProtocol();

    void setFileDate(const QDate &date);
    /// Opens the book of the clock's date and reads what it holds.
    void Load();
    /// Brings the file to the state of the list. What cannot be written now is written by a later call.
    void Save();
    /// Appends line text, then reports and saves.
    void add(const QString &text, ProtocolTypes type);
    /// Appends one character, with neither report nor save.
    void add(QChar c, ProtocolTypes type);
    /// Puts a whole line into the list at once.
    void addServiceString(const QString &text, ProtocolTypes type);
    /// The normal way to note an event: adds the time; with \a cached it waits for the running line's end.
    void addCacheServiceString(const QString &text, ProtocolTypes type, bool cached);

    /// Path of the book of \a date.
    [[nodiscard]] static QString pathForDate(const QDate &date);
    /// The lines of a book; empty if it is missing or unreadable.
    [[nodiscard]] static QStringList readLines(const QString &path);

signals:
    void Changed();
    void NewLine();

public:
    QString fileName = QStringLiteral("startup.prt");
    QFile file;
    bool rewriteAll = false;
    bool flushRequested = false;
    QStringList lines; ///< only the last line may grow
    QString cachedText;
    ProtocolTypes cachedType = ProtocolNone;
    int newLineCount = 0;
    int lineWidthLimit = 0; ///< text characters; 0 is no limit
};

extern CProtocol Log;
