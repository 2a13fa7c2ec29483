#pragma once

#include <QLayout>
#include <QList>

/// Places its items like the words of a paragraph: from left to right, and in a further row what does not
/// fit any more. Its least width is that of its widest item, so that a window stays as narrow as its screen
/// in the largest letters too. Main thread.
class CFlowLayout : public QLayout
{
    Q_OBJECT

public:
    /// \a margin all round and \a spacing between items and between rows, in pixels.
    CFlowLayout(int margin, int spacing, QWidget *parent = nullptr);
    ~CFlowLayout() override;

    /// Whether an item that wants to grow takes what its row has left; at first it does not.
    void setFillsRows(bool on) { m_fillsRows = on; }

    /// Takes \a item in behind the others and owns it from then on.
    void addItem(QLayoutItem *item) override;
    [[nodiscard]] int count() const override;
    /// Null for an \a index that there is not.
    [[nodiscard]] QLayoutItem *itemAt(int index) const override;
    /// The same, and the item goes to the caller.
    QLayoutItem *takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override; ///< of all rows
    [[nodiscard]] QSize sizeHint() const override;              ///< all in one row
    [[nodiscard]] QSize minimumSize() const override;           ///< of the widest item, and of the tallest
    void setGeometry(const QRect &rect) override;

private:
    /// The height that the rows take in the width of \a rect, margins included; with \a place also puts the
    /// items there. Hidden items take no room.
    int flow(const QRect &rect, bool place) const;
    void placeRow(const QList<QLayoutItem *> &row, QPoint at, int height, int width) const;
    [[nodiscard]] int leftOver(const QList<QLayoutItem *> &row, int width) const;
    [[nodiscard]] QSize withMargins(const QSize &size) const;

    QList<QLayoutItem *> m_items;
    bool m_fillsRows = false;
};

/// \a controls as a row of such a paragraph. Null ones are passed over.
[[nodiscard]] QWidget *newFlowRow(const QList<QWidget *> &controls);
