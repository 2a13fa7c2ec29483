#pragma once

#include "ui/dialogs/dialog.h"

#include <QString>

class QLineEdit;
class QPushButton;

/// Asks for one line of text for the line.
class CStringDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CStringDialog(QWidget *parent = nullptr);

    /// Runs the dialog with an empty field; 1 if the operator sends, the line then stands in text.
    int exec(const QString &title);

    QString text; ///< the line applied last

public slots:
    void slotChanged(const QString &line);
    /// Takes a line that the code can carry as it stands. Another one is put back as it would go, and the
    /// dialog stays, so that the operator sees what was dropped.
    void slotApply();

private:
    QLineEdit *m_edit;
    QPushButton *m_send;
};
