#include "ui/widgets/spin_box_limits.h"

QSpinBox_Limits::QSpinBox_Limits(int value, int minimum, int maximum, QWidget *parent) : QSpinBox(parent)
{
    setRange(minimum, maximum);
    setValue(value);
    // The four zeros make room for the arrows and the frame.
    setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000") + QString::number(maximum)));
}
