#pragma once

#include "text/file_coding.h"

#include <QString>

#include <functional>

class QWidget;

/// The operator's choices of files. Each one of the program comes through here, so that a test can answer it
/// beforehand. Main thread.

/// Lets him choose a file to open; empty if he chose none.
[[nodiscard]] QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter);

/// Lets him choose a name to save under, \a path being suggested; empty if he chose none. He has agreed to
/// replace a file that is there.
[[nodiscard]] QString pickFileToSave(QWidget *parent, const QString &title, const QString &path,
                                     const QString &filter);

/// A text file, and how it is coded.
struct CodedFile {
    QString path; ///< of a directory if nothing but the place is suggested; empty if none was chosen
    FileCoding coding = FileCoding::UTF8;
};
/// The same for a text, with the row for its coding.
[[nodiscard]] CodedFile pickCodedFileToSave(QWidget *parent, const QString &title,
                                            const CodedFile &suggested);

/// What pickFileToOpen(), pickFileToSave() and pickCodedFileToSave() call. A test puts its own functions here
/// and restores the former ones.
extern std::function<QString(QWidget *parent, const QString &title, const QString &filter)> pickFileHandler;
extern std::function<QString(QWidget *parent, const QString &title, const QString &path,
                             const QString &filter)>
    pickSaveHandler;
extern std::function<CodedFile(QWidget *parent, const QString &title, const CodedFile &suggested)>
    pickCodedSaveHandler;
