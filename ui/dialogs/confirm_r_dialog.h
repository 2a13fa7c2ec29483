#pragma once

#include "ui/dialogs/dialog.h"

class QLineEdit;
class QPushButton;

/// Confirmation of a telegram of category Р. It stands beside the window while the line goes on, and
/// confirms by itself after Options.autoConfirmRTimeOut seconds if an operator is named. Exists at most
/// once; main thread.
class CConfirmRDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CConfirmRDialog(QWidget *parent = nullptr);

    /// Fills both fields, also while the dialog is open.
    void setRNumberAndOperator(int number, const QString &operatorName);

public slots:
    /// Sends the confirmation with the fields as they stand, and closes.
    void slotPressConfirm();
    void slotPressCancel();
    void slotOn_1sec();

protected:
    void showEvent(QShowEvent *event) override;

public:
    int countdown = 0; ///< seconds until the confirmation is given by itself; 0 is never

private:
    QLineEdit *m_number;
    QLineEdit *m_operator;
    QPushButton *m_confirm;
};

extern CConfirmRDialog *ConfirmRDialog; ///< null until first needed
