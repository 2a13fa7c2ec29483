#include "ui/label_clickable.h"

void CLabelClickable::mousePressEvent(QMouseEvent *)
{
    emit clicked();
}
