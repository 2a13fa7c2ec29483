#pragma once

#include "ui/widgets/file_table.h"

#include <QList>

/// The list of an archive page. Its columns have their widths in characters; in another font they keep the
/// proportion that the operator has given them. Main thread.
class CArchiveTable : public CFileTable
{
    Q_OBJECT

public:
    /// \a model is the caller's and outlives the table; \a widths are characters, one for each column.
    CArchiveTable(QAbstractItemModel &model, const QList<int> &widths, const char *name);

    QSize sizeHint() const override; ///< as wide as the columns

signals:
    void rowChosen();
    void enterPressed();

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    void followFont();

    QList<int> m_widths; ///< in characters
    QList<int> m_usual;  ///< in pixels, in the font that the columns have followed so far
};
