#pragma once

#include <QTableView>

/// A list of files, one of which may be selected, for the mouse or the keyboard alone: Home and End go to the
/// first and the last row, Enter opens, Tab leaves. A cell that is cut shows its whole text under the mouse.
/// A selected row that is removed leaves nothing selected, so that no command falls on its neighbour.
class CFileTable : public QTableView
{
    Q_OBJECT

public:
    explicit CFileTable(QWidget *parent = nullptr);

    /// Pixels of a column for \a characters in \a font, with the margins of a cell around them.
    [[nodiscard]] static int widthOf(int characters, const QFont &font);
    /// The selected row, or -1.
    [[nodiscard]] int selectedRow() const;

protected:
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

protected slots:
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last) override;
};
