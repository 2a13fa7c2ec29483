#pragma once

#include "ui/dialogs/pick_list_dialog.h"

/// The subscribers of Options.abonents, for editing or to choose one; selected is his number. Main thread.
class CAbonentListDialog : public CPickListDialog
{
    Q_OBJECT

public:
    explicit CAbonentListDialog(QWidget *parent = nullptr);

protected:
    void keep(const QList<QStringList> &records) override;
};
