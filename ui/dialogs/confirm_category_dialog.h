#pragma once

#include "ui/dialogs/dialog.h"

/// Tells that a telegram with a category has come. Exists at most once; main thread.
class CConfirmCategoryDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CConfirmCategoryDialog(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
};

extern CConfirmCategoryDialog *ConfirmCategoryDialog; ///< null until first needed
