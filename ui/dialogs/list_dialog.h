#pragma once

#include "ui/dialogs/dialog.h"
#include "ui/dialogs/list_cell.h"

#include <QList>
#include <QString>
#include <QStringList>

class QCheckBox;
class QLabel;
class QTableWidget;

/// A list of Options as a table, a record in each row. It can be read only, until the operator allows himself
/// to edit it. What he changed takes the place of the list when the dialog is left, if he then says so. A row
/// in which nothing stands is no record. Main thread.
class CListDialog : public CDialog
{
    Q_OBJECT

public:
    struct Shape {
        const char *name; ///< of the table, as an object
        QString heading;
        QString question; ///< title of the question whether to keep the changes
        QList<ListColumn> columns;
    };

    ~CListDialog() override;

    bool changed = false; ///< the table is no longer what the list in Options is

public slots:
    void cellChanged(int row, int column);
    void selectionChanged();
    /// Appends an empty row, and opens its first cell.
    void addRow();
    void removeRow(); ///< the current one, if there is one
    /// Qt::Checked lets the table be edited.
    void editingStateChanged(int state);
    /// Asks whether to keep what was changed, and keeps it if so. Once the program is closing nobody answers,
    /// and it is kept.
    void askForSave();
    /// Leaves the dialog, with that question if there is a change.
    void slotApply();
    void reject() override;

protected:
    CListDialog(const Shape &shape, QWidget *parent);

    /// Fills the table with \a records and puts \a select, which may be null, into the row of buttons.
    void build(const QList<QStringList> &records, QPushButton *select);
    /// Replaces the list in Options.
    virtual void keep(const QList<QStringList> &records) = 0;
    /// Takes what stands in the cell that is being edited.
    void finishEditing() { m_cell->finish(); }
    /// Shows \a text under the table until editing goes on.
    void tell(const QString &text);
    bool eventFilter(QObject *watched, QEvent *event) override;

    QTableWidget *const m_table;
    const QString m_heading;

private:
    void fill(const QList<QStringList> &records);
    void fitColumns();
    [[nodiscard]] QList<QStringList> records() const;

    const QString m_question;
    CListCell *const m_cell;
    QLabel *const m_message;
    QCheckBox *const m_editing;
    QPushButton *const m_add;
    QPushButton *const m_remove;
};
