#pragma once

#include "records/journal_lines.h"
#include "text/growing_text.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A workstation without window, line or threads, fresh for one test: a temporary data directory that is
/// the current one, all global objects as at start, the clock at a given moment. At its end the current
/// directory is the former one and the directory is gone.
class Desk
{
public:
    explicit Desk(const QDateTime &moment = QDateTime(QDate(2026, 7, 31), QTime(12, 0)));
    explicit Desk(QTime time);
    ~Desk();
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    [[nodiscard]] QString path(const QString &name = QString()) const; ///< absolute path in the directory
    void write(const QString &name, const QByteArray &content) const;  ///< makes a file, and its directories
    [[nodiscard]] QByteArray read(const QString &name) const;          ///< empty if there is none
    /// The same with each line end as "\n": settings files have those of the system.
    [[nodiscard]] QByteArray readText(const QString &name) const;
    /// What has been printed to the file \a name, once no print job is open: on a busy machine one goes on.
    [[nodiscard]] QByteArray readPrinted(const QString &name = QStringLiteral("printed")) const;
    [[nodiscard]] QStringList names(const QString &directory,
                                    const QString &mask = QStringLiteral("*")) const;
    /// Today's journal with the type marks shown as digits, "3" + "12:00:00 Запуск", and slashes in all
    /// paths.
    [[nodiscard]] QStringList journal() const;
    /// Takes what a procedure put on the line.
    [[nodiscard]] QString sent() const;

    QTemporaryDir directory;

private:
    QString m_formerDirectory;
};

/// Brings the global objects to what they are at the program's start; the link thread must not run.
void resetGlobals();

/// What a failed comparison shows.
inline char *toString(const CGrowingText &text)
{
    return qstrdup(qUtf8Printable(text));
}

inline char *toString(const CJournalLines &lines)
{
    return qstrdup(qUtf8Printable(lines.join(QLatin1Char('/'))));
}
