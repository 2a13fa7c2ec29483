#pragma once

#include "ui/dialogs/dialog.h"

#include <QString>

class QTableWidget;

/// The subscribers of Options.abonents, of whom one may be chosen; the list cannot be edited here. exec()
/// gives 1 if one was chosen. Main thread.
class CAbonentListDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CAbonentListDialog(QWidget *parent = nullptr);

    bool selectMode = false; ///< opened to choose: a double click chooses
    QString selected;        ///< the number of the one who was chosen; empty if he has none

public slots:
    /// Chooses the subscriber of the current row and ends the dialog. Without one it stays open.
    void slotSelect();
    void cellDoubleClicked(int row, int column);

private:
    void fill();

    QTableWidget *m_table;
};
