#pragma once

#include "ui/dialogs/dialog.h"

class QTextEdit;

/// Shows a text that the operator may edit before it is printed.
class CPrintTxtDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CPrintTxtDialog(const QString &text, QWidget *parent = nullptr);

public slots:
    /// Prints the text as edited and ends the dialog.
    void slotApply();

private:
    QTextEdit *m_text;
};
