#pragma once

#include "records/file_list_model.h"

#include <QDate>
#include <QTime>

/// One telegram that a search has found.
class CTableViewModelItem_SearchResult
{
public:
    bool firstInDirectory = false; ///< the first file of its directory's listing; not shown
    QDate date;                    ///< the day searched
    QTime time;                    ///< of the file's creation
    QString fileName;
    QString dirPath; ///< without a separator at its end
};

/// What a search has found, in its order. Each row shows its date: the first file of a directory, which
/// would be the place for it, need not be among the hits.
class CTableViewModel_SearchResult : public CFileListModel<CTableViewModelItem_SearchResult>
{
    Q_OBJECT

public:
    using CFileListModel::CFileListModel;

    /// Characters that \a column takes; 0 if there is no such column.
    [[nodiscard]] static int columnWidth(int column);

    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// Qt::UserRole is the file's name.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// Where the file of row \a row stands, which must exist.
    [[nodiscard]] QString pathAt(int row) const;
};
