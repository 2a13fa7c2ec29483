#include "records/io_model.h"

#include "app/options.h"
#include "app/ordinary_file.h"
#include "records/creation_time.h"
#include "records/file_attr.h"
#include "records/protocol.h"
#include "text/utils.h"

#include <QBrush>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{
enum Column { TimeColumn, FileColumn, EmptyColumn, ColumnCount };

struct Shape {
    const char *title;
    int width; // characters
};
constexpr Shape Columns[ColumnCount] = {{"Время", 8}, {"Файл", 16}, {"", 10}};

bool hasNewSuffix(const QString &fileName)
{
    return fileName.endsWith(Options.newFileSuffix);
}

bool isMarked(const CTableViewModelItem_IO &row)
{
    return row.isNew || hasNewSuffix(row.fileName);
}

/// True if the mark is off afterwards, whoever took it off.
bool clearMark(const QString &path)
{
    const CFileAttr mark(path);
    mark.clearNew();
    return !mark.checkNew();
}

CTableViewModelItem_IO itemOf(const QFileInfo &file, int position)
{
    CTableViewModelItem_IO item;
    item.N = CUtils::StringNNN(position);
    item.time = creationTime(file).time();
    item.fileName = file.fileName();
    item.isNew = CFileAttr(file.filePath()).checkNew();
    return item;
}
} // namespace

int CTableViewModelItem_IO::columnWidth(int column)
{
    return column >= 0 && column < ColumnCount ? Columns[column].width : 0;
}

int CTableViewModel_IO::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CTableViewModel_IO::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const CTableViewModelItem_IO &row = m_rows.at(index.row());
    if (role == Qt::UserRole)
        return row.fileName;
    if (role == Qt::BackgroundRole && isMarked(row))
        return QBrush(Qt::yellow);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case TimeColumn: return row.time.toString(QStringLiteral("hh:mm:ss"));
    case FileColumn: return shownName(row.fileName);
    }
    return {};
}

QVariant CTableViewModel_IO::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool asked = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    if (!asked || section < 0 || section >= ColumnCount)
        return {};
    return QString::fromUtf8(Columns[section].title);
}

void CTableViewModel_IO::appendOrCheckDublicate(const CTableViewModelItem_IO &item)
{
    if (!checkOff(item.fileName))
        append(item);
}

bool CTableViewModel_IO::checkOff(const QString &fileName)
{
    const QList<int> rows = rowsOf(fileName);
    if (rows.isEmpty())
        return false;
    m_rows[rows.first()].checked = false;
    return true;
}

void CTableViewModel_IO::reloadFromDir()
{
    if (!m_listedPath.isNull() && m_listedPath != dirPath)
        deleteRows(0, m_rows.size()); // a file of another day is another one, even under the same name
    m_listedPath = dirPath.isNull() ? QStringLiteral("") : dirPath;
    const QFileInfoList files =
        dirPath.isEmpty() // QDir takes that for the current directory
            ? QFileInfoList()
            : QDir(dirPath).entryInfoList({QStringLiteral("*")}, QDir::Files, QDir::Name);
    setChecked();
    QList<CTableViewModelItem_IO> unlisted;
    for (int position = 0; position < files.size(); ++position) {
        const QString name = files.at(position).fileName();
        if (!isHidden(name) && !checkOff(name))
            unlisted << itemOf(files.at(position), position);
    }
    append(unlisted);
    deleteChecked();
}

bool CTableViewModel_IO::isHidden(const QString &fileName) const
{
    // A connection's transcript; the centre's telegrams have other names, and a foreign one is a telegram.
    return hideConnections && Options.processMode != CKS && fileName.startsWith(QLatin1Char('s'));
}

bool CTableViewModel_IO::clearNew(int row)
{
    if (row < 0 || row >= m_rows.size())
        return false;
    if (!isMarked(m_rows.at(row)))
        return true;
    const QString path = pathAt(row);
    if (!QFileInfo(path).isFile()) // the next reload takes the row away
        return false;
    m_rows[row].isNew = !clearMark(path);
    const bool cleared = !m_rows.at(row).isNew && shortenName(row);
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    if (!cleared && !m_refusalNoted)
        Log.addCacheServiceString(QStringLiteral("Невозможно снять отметку нового файла:") + shownName(path),
                                  ProtocolError, true);
    m_refusalNoted = !cleared;
    if (cleared)
        deleteNamesakes(row);
    return cleared;
}

bool CTableViewModel_IO::shortenName(int row)
{
    const QString name = m_rows.at(row).fileName;
    if (!hasNewSuffix(name))
        return true;
    const QString shorter = name.chopped(Options.newFileSuffix.size());
    // moveBeside() writes over no file that bears the shorter name already.
    if (shorter.isEmpty() || !moveBeside(pathOf(name), pathOf(shorter)))
        return false;
    m_rows[row].fileName = shorter;
    m_rowsByName.clear();
    return true;
}

void CTableViewModel_IO::deleteNamesakes(int row)
{
    const QList<int> rows = rowsOf(m_rows.at(row).fileName);
    for (int i = rows.size() - 1; i >= 0; --i)
        if (rows.at(i) != row)
            deleteRow(rows.at(i));
}

QString CTableViewModel_IO::pathAt(int row) const
{
    return pathOf(m_rows.at(row).fileName);
}

QString CTableViewModel_IO::pathOf(const QString &fileName) const
{
    return dirPath + QDir::separator() + fileName;
}
