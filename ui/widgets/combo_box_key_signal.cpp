#include "ui/widgets/combo_box_key_signal.h"

void QComboBoxKeySignal::keyPressEvent(QKeyEvent *event)
{
    emit keyPress(event);
    QComboBox::keyPressEvent(event);
}
