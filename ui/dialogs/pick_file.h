#pragma once

#include "text/file_coding.h"

#include <QString>

#include <functional>

class QWidget;

/// The operator's choices of files. Each one of the program comes through here, so that a test can answer it
/// beforehand. The current directory, which a dialog of the system may change, is the same afterwards. Main
/// thread.

/// Lets him choose a file to open; empty if he chose none.
[[nodiscard]] QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter);

/// Lets him choose a name to save under, \a path being suggested; empty if he chose none. He has agreed to
/// replace a file that is there.
[[nodiscard]] QString pickFileToSave(QWidget *parent, const QString &title, const QString &path,
                                     const QString &filter);

/// The same, beginning in \a directory.
[[nodiscard]] QString pickFileToOpenIn(QWidget *parent, const QString &title, const QString &directory,
                                       const QString &filter);

/// A name for a file, and the one of several filters that was in force when it was chosen.
struct FilteredFile {
    QString path; ///< empty if none was chosen
    QString filter;
};
/// Lets him choose a name to save under in \a directory, \a filters being separated by ";;".
[[nodiscard]] FilteredFile pickNameToSave(QWidget *parent, const QString &title, const QString &directory,
                                          const QString &filters);

/// A text file, and how it is coded.
struct CodedFile {
    QString path; ///< of a directory if nothing but the place is suggested; empty if none was chosen
    FileCoding coding = FileCoding::UTF8;
};
/// The same for a text, with the row for its coding.
[[nodiscard]] CodedFile pickCodedFileToSave(QWidget *parent, const QString &title,
                                            const CodedFile &suggested);

/// What the functions above call. A test puts its own functions here and restores the former ones.
extern std::function<QString(QWidget *parent, const QString &title, const QString &filter)> pickFileHandler;
extern std::function<QString(QWidget *parent, const QString &title, const QString &path,
                             const QString &filter)>
    pickSaveHandler;
extern std::function<QString(QWidget *parent, const QString &title, const QString &directory,
                             const QString &filter)>
    pickFileInHandler;
extern std::function<FilteredFile(QWidget *parent, const QString &title, const QString &directory,
                                  const QString &filters)>
    pickNameHandler;
extern std::function<CodedFile(QWidget *parent, const QString &title, const CodedFile &suggested)>
    pickCodedSaveHandler;
