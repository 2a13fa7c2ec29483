#pragma once

#include <QSpinBox>

/// A spin box just wide enough for its greatest value.
class QSpinBox_Limits : public QSpinBox
{
    Q_OBJECT

public:
    QSpinBox_Limits(int value, int minimum, int maximum, QWidget *parent = nullptr);
};
