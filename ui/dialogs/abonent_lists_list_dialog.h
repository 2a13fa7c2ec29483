#pragma once

#include "ui/dialogs/pick_list_dialog.h"

/// The lists of subscribers of Options.abonentLists, for editing or to choose one; selected are its numbers,
/// joined by ",". Main thread.
class CAbonentListsListDialog : public CPickListDialog
{
    Q_OBJECT

public:
    explicit CAbonentListsListDialog(QWidget *parent = nullptr);

protected:
    void keep(const QList<QStringList> &records) override;
};
