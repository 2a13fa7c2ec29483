#include "ui/widgets/label_clickable.h"

void CLabelClickable::mousePressEvent(QMouseEvent *)
{
    emit clicked();
}
