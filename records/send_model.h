#pragma once

#include "records/file_info.h"

#include <QAbstractListModel>
#include <QList>
#include <QMultiHash>
#include <QString>

/// One row of the send queue: a file of the outgoing directory and its record.
class CTableViewModelItem_Send : public CFileInfo
{
public:
    /// Shape of the table for one line procedure; widths are characters.
    struct TableData {
        int width;
        int columns;
        int columnWidth[6];
        QString title[6];
    };
    static const TableData tableData[3];
    /// The shape for Options.processMode; that of the direct procedure for an unknown one.
    [[nodiscard]] static const TableData &currentTable();

    /// Fills the record from the side-car of pathOut + fileName.
    bool loadFromFile();

    bool checked = false; ///< scratch mark of the scan: the file has not been seen
    QString N;            ///< position in the scan, three digits
    QString fileName;     ///< without a directory
};

/// The send queue in sending order. A row number that does not exist is ignored. Main thread.
class CTableViewModel_Send : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit CTableViewModel_Send(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void clear();
    /// Takes a copy of \a items in place of all rows.
    void populate(QList<CTableViewModelItem_Send> *items);
    void append(const CTableViewModelItem_Send &item);
    void insertAt(int row, const CTableViewModelItem_Send &item);
    void update(int row, const CTableViewModelItem_Send &item);
    void deleteRow(int row);

    /// Marks all rows as not seen.
    void setChecked();
    /// Marks the row of the same file as seen. False if there is none.
    bool unCheckItem(const CTableViewModelItem_Send &item);
    /// Copies \a item over each row of the same file.
    void update(const CTableViewModelItem_Send &item);
    /// Removes the rows that were not seen.
    void deleteChecked();
    /// Brings the rows into sending order for Options.processMode; rows that tie keep their order.
    void sortValues();

    /// Row \a row, which must exist.
    [[nodiscard]] CTableViewModelItem_Send &at(int row) { return m_rows[row]; }

private:
    [[nodiscard]] QList<int> rowsOf(const QString &fileName);
    void moveUp(int from, int to);

    QList<CTableViewModelItem_Send> m_rows;
    QMultiHash<QString, int> m_rowsByName; ///< empty until asked for, and after rows have moved
};

/// The files that could not be sent; differs in the title of its first column.
class CTableViewModel_SendBad : public CTableViewModel_Send
{
    Q_OBJECT

public:
    using CTableViewModel_Send::CTableViewModel_Send;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};

/// The files of the outgoing directory, classed by the line procedure.
struct SendQueueScan {
    QList<CTableViewModelItem_Send> good;
    QList<CTableViewModelItem_Send> bad;
};
/// Lists Options' outgoing directory for Options.processMode.
[[nodiscard]] SendQueueScan scanSendQueue();
/// Brings \a good and \a bad to the state of \a scan, sorts \a good, and returns the count of files.
int applySendQueue(const SendQueueScan &scan, CTableViewModel_Send &good, CTableViewModel_SendBad &bad);
