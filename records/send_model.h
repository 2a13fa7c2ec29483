#pragma once

#include "records/file_info.h"
#include "records/file_list_model.h"

#include <QList>
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

/// The send queue in sending order.
class CTableViewModel_Send : public CFileListModel<CTableViewModelItem_Send>
{
    Q_OBJECT

public:
    using CFileListModel::CFileListModel;

    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Marks all rows as not seen.
    void setChecked() { checkAll(); }
    /// Marks the row of the same file as seen. False if there is none.
    bool unCheckItem(const CTableViewModelItem_Send &item);
    using CFileListModel::update;
    /// Copies \a item over each row of the same file.
    void update(const CTableViewModelItem_Send &item);
    /// Removes the rows that were not seen.
    void deleteChecked() { deleteAllChecked(); }
    /// Brings the rows into sending order for Options.processMode; rows that tie keep their order.
    void sortValues();

    using CFileListModel::at;
    /// Row \a row, which must exist.
    [[nodiscard]] CTableViewModelItem_Send &at(int row) { return m_rows[row]; }

private:
    void moveUp(int from, int to);
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
