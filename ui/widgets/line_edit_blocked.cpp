#include "ui/widgets/line_edit_blocked.h"

QLineEditBlocked::QLineEditBlocked(QWidget *parent) : QLineEditBlocked(QString(), parent) {}

QLineEditBlocked::QLineEditBlocked(const QString &text, QWidget *parent) : QLineEdit(text, parent)
{
    setBlocked(true);
}

void QLineEditBlocked::mouseDoubleClickEvent(QMouseEvent *)
{
    setBlocked(!isReadOnly());
    if (isReadOnly())
        emit blocked();
}

void QLineEditBlocked::setBlocked(bool on)
{
    setReadOnly(on);
    QPalette colours;
    if (on)
        colours.setColor(QPalette::Base, QPalette().color(QPalette::Window));
    setPalette(colours);
}
