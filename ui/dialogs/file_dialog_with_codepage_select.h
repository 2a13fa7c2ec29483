#pragma once

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

private:
    QComboBox *m_codepage;
};
