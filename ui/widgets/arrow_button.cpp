#include "ui/widgets/arrow_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

void CArrowButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton frame;
    initStyleOption(&frame);
    frame.text.clear();
    painter.drawControl(QStyle::CE_PushButton, frame);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextDontClip, text());
}
