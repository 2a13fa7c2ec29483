#pragma once

#include "app/ordinary_reader.h"
#include "records/search_model.h"

#include <QByteArray>
#include <QByteArrayMatcher>
#include <QDate>
#include <QFileInfo>
#include <QList>
#include <QString>

/// The search for telegrams of a range of days, in steps short enough to be taken between the events of a
/// window. Looks at each day's incoming, then outgoing directory, at each file in the order of names, and
/// compares bytes. A file that cannot be opened or is no ordinary one is left out. Main thread.
class CTelegramSearch
{
public:
    struct Request {
        QDate from, to;        ///< both included; none if they stand the wrong way round
        bool incoming = false; ///< look at what was received
        bool outgoing = false; ///< look at what was sent
        QString text;          ///< what the files are to contain; empty takes every file unopened
    };

    explicit CTelegramSearch(const Request &request);

    /// Takes steps for \a milliseconds, but one at least, and appends what they find to \a found. A step is
    /// a directory's listing, a file, or a quarter of a megabyte of one. False when the search is over.
    bool next(int milliseconds, CTableViewModel_SearchResult &found);
    [[nodiscard]] bool isOver() const { return m_daysDone == m_dayCount; }
    /// Days looked at, of dayCount().
    [[nodiscard]] int daysDone() const { return m_daysDone; }
    [[nodiscard]] int dayCount() const { return m_dayCount; }

private:
    enum Direction { Incoming, Outgoing, DirectionCount };

    void step();
    void listNext();
    void listDirectory(const QString &path);
    void lookAt(const QFileInfo &file);
    void readOn();
    void take(const QFileInfo &file);

    Request m_request;
    QByteArrayMatcher m_matcher;
    int m_dayCount = 0, m_daysDone = 0;
    int m_direction = Incoming; ///< what is listed next of the day that is under way
    QFileInfoList m_files;      ///< of the directory that is looked at
    int m_position = 0;         ///< in it, of the file that is looked at next
    COrdinaryReader m_file;     ///< open from the first to the last reading of a file
    QByteArray m_bytes;         ///< as much as is read at a time
    int m_kept = 0;             ///< how many of them, at their begin, are of the reading before
    QList<CTableViewModelItem_SearchResult> m_found; ///< by the steps of one next()
};
