#pragma once

#include "ui/dialogs/list_dialog.h"

class QTableWidgetItem;

/// A list with a column of numbers, of which one may be chosen: exec() then gives 1. Main thread.
class CPickListDialog : public CListDialog
{
    Q_OBJECT

public:
    bool selectMode = false; ///< opened to choose: a double click chooses
    QString selected;        ///< the number, or numbers, of the row that was chosen; may be empty

public slots:
    /// Chooses the current row and ends the dialog, with the question whether to keep the changes if there
    /// are any. Without a current row it stays open.
    void slotSelect();
    /// Chooses in the same way, but asks nothing: changes are not kept, and the journal tells so.
    void cellDoubleClicked(int row, int column);
    /// Leaves in a number only what can be dialled.
    void itemChanged(QTableWidgetItem *item);

protected:
    CPickListDialog(const Shape &shape, int numberColumn, QWidget *parent);

    /// A column of a list whose records are stored with "|" between their fields.
    [[nodiscard]] static ListColumn column(const QString &title);

    /// Fills the table with \a records; \a label is of the button that chooses.
    void build(const QList<QStringList> &records, const QString &label);

private:
    [[nodiscard]] const QTableWidgetItem *currentNumber() const;

    const int m_numberColumn;
};
