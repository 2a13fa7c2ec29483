#include "ui/widgets/line_edit_limits.h"

QLineEdit_Limits::QLineEdit_Limits(const QString &text, int maxLength, QWidget *parent) : QLineEdit(parent)
{
    setMaxLength(maxLength);
    setText(text);
    // One character more than needed makes room for the frame and the cursor.
    const QString widest(maxLength + 1, QLatin1Char('0'));
    setFixedWidth(qMax(fontMetrics().horizontalAdvance(widest),
                       fontMetrics().horizontalAdvance(this->text() + QLatin1Char('0'))));
}
