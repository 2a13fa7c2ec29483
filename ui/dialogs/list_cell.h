#pragma once

#include <QPointer>
#include <QStringList>
#include <QStyledItemDelegate>

/// A column of a list that can be edited.
struct ListColumn {
    QString title;
    QString refused; ///< signs that nobody may type into it
    QString reason;  ///< what the operator is told who tries
};

/// Edits the cells of such a list. A key or a paste that brings a refused sign changes nothing, and the rest
/// of what was typed stays in the open cell. A sign that a cell has from elsewhere may stay. Main thread.
class CListCell : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CListCell(const QList<ListColumn> &columns, QObject *parent = nullptr);

    [[nodiscard]] bool isOpen() const { return !m_editor.isNull(); }
    /// Takes what stands in the open cell, if there is one, and closes it.
    void finish();

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;

signals:
    /// Why a sign did not get in; empty when editing goes on.
    void told(const QString &reason) const;

private:
    const QList<ListColumn> m_columns;
    mutable QPointer<QWidget> m_editor; ///< the open cell's
};
