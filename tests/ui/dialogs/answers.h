#pragma once

#include "app/ask.h"
#include "ui/dialogs/pick_file.h"

#include <QList>
#include <QStringList>

#include <utility>

/// Answers the program's questions and choices of files beforehand, and keeps what was asked.
class Answers
{
public:
    Answers()
    {
        askHandler = [this](QWidget *, const QString &title, const QString &text) {
            asked << title + QLatin1Char('/') + text;
            return yes.isEmpty() ? QMessageBox::No : yes.takeFirst() ? QMessageBox::Yes : QMessageBox::No;
        };
        tellErrorHandler = [this](QWidget *, const QString &title, const QString &text) {
            told << title + QLatin1Char('/') + text;
        };
        pickSaveHandler = [this](QWidget *, const QString &title, const QString &path,
                                 const QString &filter) {
            asked << title + QLatin1Char('/') + path + QLatin1Char('/') + filter;
            return paths.isEmpty() ? QString() : paths.takeFirst();
        };
        pickFileHandler = [this](QWidget *, const QString &title, const QString &filter) {
            asked << title + QLatin1Char('/') + filter;
            return opened.isEmpty() ? QString() : opened.takeFirst();
        };
        pickFileInHandler = [this](QWidget *, const QString &title, const QString &directory,
                                   const QString &filter) {
            asked << title + QLatin1Char('/') + directory + QLatin1Char('/') + filter;
            return opened.isEmpty() ? QString() : opened.takeFirst();
        };
        pickNameHandler = [this](QWidget *, const QString &title, const QString &directory,
                                 const QString &filters) {
            asked << title + QLatin1Char('/') + directory + QLatin1Char('/') + filters;
            return names.isEmpty() ? FilteredFile() : names.takeFirst();
        };
        pickCodedSaveHandler = [this](QWidget *, const QString &title, const CodedFile &suggested) {
            asked << title + QLatin1Char('/') + suggested.path + QLatin1Char('/') + nameOf(suggested.coding);
            return files.isEmpty() ? CodedFile() : files.takeFirst();
        };
    }
    ~Answers()
    {
        askHandler = m_ask;
        tellErrorHandler = m_tellError;
        pickSaveHandler = m_pickSave;
        pickFileHandler = m_pickFile;
        pickFileInHandler = m_pickFileIn;
        pickNameHandler = m_pickName;
        pickCodedSaveHandler = m_pickCodedSave;
    }
    Answers(const Answers &) = delete;
    Answers &operator=(const Answers &) = delete;

    QList<bool> yes;           ///< to the questions, in their order; No behind the last
    QStringList paths;         ///< to save under; none behind the last
    QStringList opened;        ///< files to open; none behind the last
    QList<FilteredFile> names; ///< to save under, each with its filter; none behind the last
    QList<CodedFile> files;    ///< texts to save; none behind the last
    QStringList asked;         ///< "title/question", "title/filter", "title/path/filter", "title/path/coding"
    QStringList told;          ///< errors: "title/text"

private:
    decltype(askHandler) m_ask = askHandler;
    decltype(tellErrorHandler) m_tellError = tellErrorHandler;
    decltype(pickSaveHandler) m_pickSave = pickSaveHandler;
    decltype(pickFileHandler) m_pickFile = pickFileHandler;
    decltype(pickFileInHandler) m_pickFileIn = pickFileInHandler;
    decltype(pickNameHandler) m_pickName = pickNameHandler;
    decltype(pickCodedSaveHandler) m_pickCodedSave = pickCodedSaveHandler;
};
