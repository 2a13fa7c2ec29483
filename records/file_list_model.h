#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QMultiHash>
#include <QString>

#include <algorithm>

/// What tells a row from the others. Rows of another kind than files have an overload of their own.
template <class Item> QString keyOf(const Item &item)
{
    return item.fileName;
}

/// What the lists of files share: rows of one kind, each with the fileName of its file, or another key. Rows
/// come and go one by one or in runs, so that a view keeps its selection with its file; only clear() and
/// populate() begin anew. A row number that does not exist is ignored. Main thread.
template <class Item> class CFileListModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_rows.size();
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override = 0;

    void clear()
    {
        beginResetModel();
        m_rows.clear();
        m_rowsByName.clear();
        endResetModel();
    }
    /// Takes a copy of \a items in place of all rows.
    void populate(QList<Item> *items)
    {
        beginResetModel();
        m_rows = *items;
        m_rowsByName.clear();
        endResetModel();
    }
    void append(const Item &item) { insertAt(m_rows.size(), item); }
    /// Appends all in one run.
    void append(const QList<Item> &items);
    void insertAt(int row, const Item &item);
    void update(int row, const Item &item);
    void deleteRow(int row) { deleteRows(row, 1); }

    /// Row \a row, which must exist.
    [[nodiscard]] const Item &at(int row) const { return m_rows.at(row); }

protected:
    /// The rows of the file \a fileName, or of another key, in their order.
    [[nodiscard]] QList<int> rowsOf(const QString &fileName);
    void deleteRows(int first, int count);
    /// Sets the scratch mark "checked" of all rows.
    void checkAll();
    /// Removes the rows with that mark.
    void deleteAllChecked();

    QList<Item> m_rows;
    QMultiHash<QString, int> m_rowsByName; ///< empty until asked for, and after rows have moved
};

template <class Item> void CFileListModel<Item>::append(const QList<Item> &items)
{
    if (items.isEmpty())
        return;
    beginInsertRows({}, m_rows.size(), m_rows.size() + items.size() - 1);
    for (const Item &item : items) {
        if (!m_rowsByName.isEmpty()) // an empty one is built when it is asked for
            m_rowsByName.insert(keyOf(item), m_rows.size());
        m_rows.append(item);
    }
    endInsertRows();
}

template <class Item> void CFileListModel<Item>::insertAt(int row, const Item &item)
{
    if (row == m_rows.size())
        return append(QList<Item>{item});
    if (row < 0 || row > m_rows.size())
        return;
    beginInsertRows({}, row, row);
    m_rows.insert(row, item);
    m_rowsByName.clear();
    endInsertRows();
}

template <class Item> void CFileListModel<Item>::update(int row, const Item &item)
{
    if (row < 0 || row >= m_rows.size())
        return;
    if (keyOf(m_rows.at(row)) != keyOf(item))
        m_rowsByName.clear();
    m_rows[row] = item;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

template <class Item> void CFileListModel<Item>::deleteRows(int first, int count)
{
    if (first < 0 || count < 1 || first + count > m_rows.size())
        return;
    beginRemoveRows({}, first, first + count - 1);
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + first + count);
    m_rowsByName.clear();
    endRemoveRows();
}

template <class Item> void CFileListModel<Item>::checkAll()
{
    for (Item &row : m_rows)
        row.checked = true;
}

template <class Item> void CFileListModel<Item>::deleteAllChecked()
{
    for (int end = m_rows.size(); end > 0;) {
        int first = end;
        while (first > 0 && m_rows.at(first - 1).checked)
            --first;
        deleteRows(first, end - first);
        end = first - 1; // row first - 1, if there is one, stays
    }
}

template <class Item> QList<int> CFileListModel<Item>::rowsOf(const QString &fileName)
{
    // A scan asks for each of its files; looking through all rows would square its cost.
    if (m_rowsByName.isEmpty())
        for (int row = 0; row < m_rows.size(); ++row)
            m_rowsByName.insert(keyOf(m_rows.at(row)), row);
    QList<int> rows = m_rowsByName.values(fileName);
    std::sort(rows.begin(), rows.end());
    return rows;
}
