#pragma once

#include <QStringList>
#include <QTemporaryDir>

/// A data directory that a test writes by hand, as a workstation would have left it, and what velda-books
/// says of it. Every day is 22 November 2026 unless a path names another.
class BookDay
{
public:
    BookDay();

    /// A directory in which a day with a centre went well: two telegrams each way, receipts, and an outage of
    /// a minute.
    static void fillCentre(BookDay &day);
    static void fillSwitched(BookDay &day); ///< the same on a switched network, one telegram each way
    static void fillDirect(BookDay &day);   ///< the same on a direct link

    // The journal. Line text ends its line by ">", as in the file.
    void received(const QString &text); ///< with "<" and ">"
    void sent(const QString &text);
    void info(const QString &timeAndWords); ///< "10:00:00 Выход"
    void error(const QString &timeAndWords);
    void writeJournal(const QString &name = QStringLiteral("20261122")); ///< and begins a new one

    /// Changes the lines that hold \a what: removes them, or puts \a instead in its place.
    void dropLines(const QString &what);
    void replaceInLines(const QString &what, const QString &instead);

    void write(const QString &name, const QString &content) const; ///< in UTF-8
    void remove(const QString &name) const;
    void settings(int processMode) const;
    void counters(int in, int out, const QString &date = QStringLiteral("20261122")) const;

    [[nodiscard]] QString path(const QString &name = QString()) const;

    /// What the program prints for the directory, with the arguments \a more; its status and errors are kept.
    QString books(const QStringList &more = {});
    /// The lines below "Расхождения" of books().
    QStringList disagreements();

    int status = -1;
    QString errors;

private:
    void line(int type, const QString &text);

    QTemporaryDir m_directory;
    QStringList m_lines;
};
