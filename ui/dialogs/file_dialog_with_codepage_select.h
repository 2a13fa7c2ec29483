#pragma once

#include "text/file_coding.h"

#include <QFileDialog>

class QComboBox;

/// A file dialog that also asks for the coding of the file's text.
class CFileDialogWithCodepageSelect : public QFileDialog
{
    Q_OBJECT

public:
    explicit CFileDialogWithCodepageSelect(QWidget *parent = nullptr, const QString &caption = QString(),
                                           const QString &directory = QString(),
                                           const QString &filter = QString());

    /// "UTF-8", "CP866" or "CP1251".
    [[nodiscard]] QString codepage() const;
    void setCodepage(const QString &name);
    [[nodiscard]] FileCoding coding() const;

    /// Asks for a name to save a text under, from \a path on: a directory, or one with a name behind it. A
    /// name without a suffix gets ".txt" while the texts are shown.
    void offerSaving(const QString &path);

private:
    QComboBox *m_codepage;
};
