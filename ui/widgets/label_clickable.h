#pragma once

#include <QLabel>

/// A label that works as a button without a frame.
class CLabelClickable : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

signals:
    void clicked(); ///< any mouse button was pressed on the label

protected:
    void mousePressEvent(QMouseEvent *event) override;
};
