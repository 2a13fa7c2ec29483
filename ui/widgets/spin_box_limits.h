#pragma once

#include <QSpinBox>

/// A spin box just wide enough for its greatest value in the font of its construction.
class QSpinBox_Limits : public QSpinBox
{
    Q_OBJECT

public:
    /// A \a value outside the limits, of a file for instance, becomes the nearer limit.
    QSpinBox_Limits(int value, int minimum, int maximum, QWidget *parent = nullptr);
};
