#pragma once

#include "ui/dialogs/dialog.h"

class QLineEdit;

/// Asks for an access code. Main thread.
class CAccessOptionDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CAccessOptionDialog(QWidget *parent = nullptr);

    [[nodiscard]] QString code() const;

private:
    QLineEdit *m_code;
};
