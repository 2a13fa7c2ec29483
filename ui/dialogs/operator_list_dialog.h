#pragma once

#include "ui/dialogs/list_dialog.h"

/// The operators of Options.listOperators, for editing. Main thread.
class COperatorListDialog : public CListDialog
{
    Q_OBJECT

public:
    explicit COperatorListDialog(QWidget *parent = nullptr);

protected:
    void keep(const QList<QStringList> &records) override;
};
