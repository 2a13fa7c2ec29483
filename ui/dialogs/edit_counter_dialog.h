#pragma once

#include "ui/dialogs/dialog.h"

class QLabel;
class QSpinBox_Limits;

/// Lets the operator correct a day counter, 0 to 999.
class CEditCounterDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CEditCounterDialog(QWidget *parent = nullptr);

    /// Runs the dialog on \a value; 1 if the operator has applied it.
    int exec(int value, const QString &title);

    int counter = -1; ///< the figure applied; -1 until then

public slots:
    void slotApply();

private:
    QLabel *m_title; ///< the title again: the frame may lack the room for it
    QSpinBox_Limits *m_edit;
};
