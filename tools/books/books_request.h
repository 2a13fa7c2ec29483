#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

/// What the command line asks for.
struct CBooksRequest {
    enum Form { Table, Csv, Page };
    QString directory;
    QDate from; ///< invalid: every day that the directory has
    QDate to;
    Form form = Table;
    QString pagePath; ///< of Page
    bool wantsHelp = false;
    bool wantsVersion = false;
    QString fault; ///< why the command line is not understood, in Russian; empty: it is

    /// The request of \a arguments, which do not hold the program's name.
    [[nodiscard]] static CBooksRequest of(const QStringList &arguments);

private:
    void takeOption(const QString &name, QStringList &rest);
    void takeDates(const QString &text);
};

/// How the program is called.
[[nodiscard]] QString booksUsage();
