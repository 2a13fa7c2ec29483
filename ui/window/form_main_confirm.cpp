// Chapter of FormMain: what a centre's telegrams ask of the operator.

#include "app/options.h"
#include "ui/dialogs/confirm_category_dialog.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/form_main.h"

void FormMain::slotConfirmR(int number)
{
    if (ConfirmCategoryDialog)
        ConfirmCategoryDialog->close();
    if (!ConfirmRDialog)
        ConfirmRDialog = new CConfirmRDialog;
    ConfirmRDialog->setRNumberAndOperator(number, Options.lastOperator);
    ConfirmRDialog->open();
}

void FormMain::slotConfirmCategory()
{
    if (!ConfirmCategoryDialog)
        ConfirmCategoryDialog = new CConfirmCategoryDialog;
    ConfirmCategoryDialog->open();
}

void FormMain::deleteConfirmDialogs()
{
    delete ConfirmRDialog;
    ConfirmRDialog = nullptr;
    delete ConfirmCategoryDialog;
    ConfirmCategoryDialog = nullptr;
}
