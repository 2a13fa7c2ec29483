#pragma once

#include "ui/dialogs/dialog.h"

#include <QString>

class QPlainTextEdit;
class QPushButton;

/// Asks for text of several lines for the line.
class CTextDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CTextDialog(QWidget *parent = nullptr);

    /// Runs the dialog with an empty field; 1 if the operator sends, what he wrote then stands in text.
    int exec(const QString &title);

    QString text; ///< the text applied last, its lines parted by LF

public slots:
    void slotChanged();
    /// Takes text that the code can carry as it stands. Another is put back as it would go, and the dialog
    /// stays, so that the operator sees what was dropped.
    void slotApply();

private:
    QPlainTextEdit *m_edit;
    QPushButton *m_send;
};
