#pragma once

#include "tests/e2e/child.h"
#include "tests/support/free_port.h"

#include <QMap>
#include <QTemporaryDir>

/// The workstation as a process, on a data directory of its own with settings that a test chooses. The
/// defaults: direct procedure, TCP client of 127.0.0.1, a scan each second, no window on a display, no sound,
/// today's date and a clock at threefold speed.
class Station : public Child
{
public:
    Station();

    /// A key of velda.ini, "PATH/keepFilesDays"; before start().
    void set(const QString &key, const QString &value);
    void callTo(quint16 port);       ///< be a client
    void listenOn(quint16 port);     ///< be a server that admits 127.0.0.1
    void useKey(const QString &hex); ///< cipher, procedure 0
    /// Reach the line by the first adapter of \a ports, at 200 baud.
    void useAdapter(const QString &ports);
    /// Another clock of libfaketime: "@2026-07-31 23:59:50 x10" is a start and a speed.
    void fakeTime(const QString &setting);
    void realTime(); ///< the machine's own clock
    /// Let the system's function \a call ("connect", "listen", "tcgetattr") never return; it says "hangs".
    void hangIn(const QString &call);
    void showOn(const QString &display); ///< a window on a real or virtual display
    /// Has an operator inside from the next start on, who does what operated_velda.cpp says of \a task.
    void operate(const QString &task, const QString &how);
    void leaveAlone(); ///< is the program as it comes again, with the next start
    /// Is the program \a path from the next start on, which has the workstation inside.
    void be(const QString &path) { m_program = path; }
    /// Puts \a library in front of the system's with the next start, told by \a variables; "" takes it away.
    void putInFront(const QString &library, const QMap<QString, QString> &variables = {});

    /// Has the program lie in the data directory and start without a word about it; after operate().
    void bringProgram();

    /// Starts the program. Settings are written if there are none yet; a second start finds the former.
    void start();
    /// Ends it in order; true if it left with status 0 in time, and the books that it leaves agree.
    [[nodiscard]] bool end(int seconds = 30);
    /// The same without a look at the books, where a test has put something between them.
    [[nodiscard]] bool leave(int seconds = 30);

    /// Whether velda-books finds nothing to say against the data directory; else that stands in the log.
    [[nodiscard]] bool booksAgree() const;
    /// What it ends with, 1 if something does not agree, and what it says; -1 if it does not end by itself.
    [[nodiscard]] int booksStatus(QByteArray *words) const;

    [[nodiscard]] QString path(const QString &name = QString()) const;
    void write(const QString &name, const QByteArray &content) const; ///< a file, and its directories
    [[nodiscard]] QByteArray read(const QString &name) const;
    [[nodiscard]] QStringList names(const QString &directory,
                                    const QString &mask = QStringLiteral("*")) const;
    /// Every file below \a directory, by its path from there.
    [[nodiscard]] QStringList tree(const QString &directory) const;

    /// Journal lines of all days, the newest day last, without type marks.
    [[nodiscard]] QStringList journal() const;
    [[nodiscard]] QStringList journalOf(const QString &day) const; ///< day as "20260731"
    [[nodiscard]] bool logged(const QString &part) const;          ///< some journal line holds it
    [[nodiscard]] int count(const QString &part) const;            ///< how many do
    /// The telegrams received, the oldest first; what is being written is none yet.
    [[nodiscard]] QStringList received() const;
    [[nodiscard]] QString state(const QString &key) const; ///< of velda_state.ini

    /// Work on the data directory of \a other, as a second instance does; before start().
    void share(const Station &other);
    /// Work on any other directory, without settings of its own; before start().
    void useDirectory(const QString &path);

    void writeSettings() const; ///< before start(), for one who wants to see them

private:
    [[nodiscard]] QString program() const;

    QTemporaryDir m_directory;
    QString m_path;         // of the data directory, mostly m_directory
    bool m_brought = false; // the program lies there
    QMap<QString, QString> m_settings;
    QProcessEnvironment m_environment;
    QProcessEnvironment m_operator;
    QString m_program;
    QString m_library; // in front of the system's
    QMap<QString, QString> m_variables;
};

/// A telegram from mark to mark with \a text between, and of at least \a characters.
[[nodiscard]] QString telegram(const QString &text, int characters = 0);
