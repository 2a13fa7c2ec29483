#pragma once

#include "ui/widgets/layouts.h"

/// The three boxes of the status strip: the first two of one fixed width, the third with what is left. Where
/// that is less than one box has, the third box stands below the others, and these shrink as far as
/// their texts allow. The strip's owner fixes its height, which heightFor() tells. Main thread.
class CStripLayout : public QHBoxLayout0
{
    Q_OBJECT

public:
    explicit CStripLayout(QWidget *parent = nullptr);

    /// In pixels: \a boxWidth of the first two boxes, \a height of a box in the upper row, \a lowHeight of
    /// the third one below. All are 0 before.
    void setSizes(int boxWidth, int height, int lowHeight);
    /// What the boxes need in a strip of \a width: one row or two.
    [[nodiscard]] int heightFor(int width) const;

    [[nodiscard]] QSize sizeHint() const override;    ///< of one row
    [[nodiscard]] QSize minimumSize() const override; ///< of the first two boxes, shrunk to their texts
    void setGeometry(const QRect &rect) override;

private:
    [[nodiscard]] bool standsInOneRow(int width) const;
    [[nodiscard]] int leastWidth(int index) const; ///< of the texts of a box

    int m_boxWidth = 0, m_height = 0, m_lowHeight = 0;
};
