#pragma once

#include "app/abonent.h"
#include "records/file_list_model.h"

/// The address book as tables: subscribers and lists of them, in the same four columns.
namespace AbonentTable
{
enum Column { NameColumn, CategoryColumn, NumberColumn, NoteColumn, ColumnCount };

/// Characters that \a column takes; 0 if there is no such column.
[[nodiscard]] int columnWidth(int column);
[[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role);
/// What stands in \a column. A list has no category, and all its numbers in one cell, with "," between them.
[[nodiscard]] QString text(const CAbonent &abonent, int column);
[[nodiscard]] QString text(const CAbonentList &list, int column);
} // namespace AbonentTable

/// One row of the table of subscribers.
class CTableViewModelItem_Abonents : public CAbonent
{
public:
    CTableViewModelItem_Abonents() = default;
    explicit CTableViewModelItem_Abonents(const CAbonent &abonent) : CAbonent(abonent) {}

    /// Characters that \a column takes; 0 if there is no such column.
    [[nodiscard]] static int columnWidth(int column) { return AbonentTable::columnWidth(column); }

    bool checked = false; ///< scratch mark, shown with the number
};

/// One row of the table of lists of subscribers.
class CTableViewModelItem_AbonentLists : public CAbonentList
{
public:
    CTableViewModelItem_AbonentLists() = default;
    explicit CTableViewModelItem_AbonentLists(const CAbonentList &list) : CAbonentList(list) {}

    /// Characters that \a column takes; 0 if there is no such column.
    [[nodiscard]] static int columnWidth(int column) { return AbonentTable::columnWidth(column); }

    bool checked = false; ///< scratch mark, shown with the numbers
};

/// Two records are the same if all that they hold is.
[[nodiscard]] QString keyOf(const CTableViewModelItem_Abonents &item);
[[nodiscard]] QString keyOf(const CTableViewModelItem_AbonentLists &item);

/// What the two tables share. Main thread.
template <class Item> class CAbonentTableModel : public CFileListModel<Item>
{
public:
    using CFileListModel<Item>::CFileListModel;

    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : AbonentTable::ColumnCount;
    }
    /// The column of numbers has a check state, the scratch mark, by the role that checkRole() names.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override
    {
        return AbonentTable::headerData(section, orientation, role);
    }

    /// Marks all rows.
    void setChecked() { this->checkAll(); }
    /// Removes the rows with the mark.
    void deleteChecked() { this->deleteAllChecked(); }
    /// Takes the mark off the row of the same record; without one, appends \a item.
    void appendOrCheckDublicate(const Item &item);
    /// Nothing: the records stand in Options, not in a directory.
    void reloadFromDir() {}

protected:
    [[nodiscard]] virtual int checkRole() const = 0;
};

template <class Item> QVariant CAbonentTableModel<Item>::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= this->m_rows.size())
        return {};
    const Item &row = this->m_rows.at(index.row());
    if (role == Qt::DisplayRole)
        return AbonentTable::text(row, index.column());
    if (role == checkRole() && index.column() == AbonentTable::NumberColumn)
        return int(row.checked ? Qt::Checked : Qt::Unchecked);
    return {};
}

template <class Item> void CAbonentTableModel<Item>::appendOrCheckDublicate(const Item &item)
{
    const QList<int> rows = this->rowsOf(keyOf(item));
    if (rows.isEmpty())
        this->append(item);
    else
        this->m_rows[rows.first()].checked = false;
}

/// The subscribers.
class CTableViewModel_Abonents : public CAbonentTableModel<CTableViewModelItem_Abonents>
{
    Q_OBJECT

public:
    using CAbonentTableModel::CAbonentTableModel;

protected:
    /// Not the role by which a view draws a box: the mark is read there, not shown.
    [[nodiscard]] int checkRole() const override { return 9; }
};

/// The lists of subscribers.
class CTableViewModel_AbonentLists : public CAbonentTableModel<CTableViewModelItem_AbonentLists>
{
    Q_OBJECT

public:
    using CAbonentTableModel::CAbonentTableModel;

protected:
    [[nodiscard]] int checkRole() const override { return Qt::CheckStateRole; }
};
