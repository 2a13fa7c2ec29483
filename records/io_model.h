#pragma once

#include "records/file_list_model.h"

#include <QTime>

/// One row of the list of a day's files.
class CTableViewModelItem_IO
{
public:
    /// Characters that \a column takes; 0 if there is no such column.
    [[nodiscard]] static int columnWidth(int column);

    bool checked = false; ///< scratch mark of the reload: the file has not been seen
    QString N;            ///< position in the listing, three digits
    QTime time;           ///< of the file's creation
    QString fileName;     ///< without a directory
    bool isNew = false;   ///< the file bears the new-mark (CFileAttr)
};

/// The files of one day's directory, in the order in which they were found.
class CTableViewModel_IO : public CFileListModel<CTableViewModelItem_IO>
{
    Q_OBJECT

public:
    using CFileListModel::CFileListModel;

    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// Qt::UserRole is the file's name, Qt::BackgroundRole yellow for a new one.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// Marks all rows as not seen.
    void setChecked() { checkAll(); }
    /// Removes the rows that were not seen.
    void deleteChecked() { deleteAllChecked(); }
    /// Marks the row of the same file as seen, and leaves it as it is; without one, appends \a item.
    void appendOrCheckDublicate(const CTableViewModelItem_IO &item);
    /// Brings the rows to what stands in dirPath: rows of files that are gone go, new files are appended in
    /// the order of their names, all others stay as and where they are. An empty dirPath holds no files.
    void reloadFromDir();

    /// Takes the new-mark off the row that the operator has opened, and off its file: the mark, and the
    /// suffix of the name in the row and on disk. False if the row or the file is missing or the disk
    /// refused; what is still on the disk then still shows, and one journal line tells of it until a mark
    /// has been cleared again.
    bool clearNew(int row);
    /// Where the file of row \a row stands, which must exist.
    [[nodiscard]] QString pathAt(int row) const;

    bool hideConnections = false; ///< leaves the transcripts of connections out, but for the centre
    QString dirPath;

private:
    [[nodiscard]] bool isHidden(const QString &fileName) const;
    [[nodiscard]] QString pathOf(const QString &fileName) const;
    bool checkOff(const QString &fileName);
    bool shortenName(int row);
    /// Removes other rows of the same name: of files that were gone when this one took their name.
    void deleteNamesakes(int row);

    QString m_listedPath;        ///< the directory that the rows are of; null before the first reload
    bool m_refusalNoted = false; ///< the journal tells that marks cannot be cleared
};
