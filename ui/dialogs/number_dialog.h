#pragma once

#include "ui/dialogs/dialog.h"

#include <QString>

class QLineEdit;
class QPushButton;

/// Asks for one number.
class CNumberDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CNumberDialog(QWidget *parent = nullptr);

    /// Runs the dialog on \a text; 1 if the operator has applied it, the text then stands in number.
    int exec(const QString &title, const QString &text);

    QString number; ///< the text applied last

public slots:
    void slotNumberChanged(const QString &text);
    void slotApply();

private:
    QLineEdit *m_edit;
    QPushButton *m_apply;
};
