#include "ui/widgets/line_edit_blocked.h"

#include <QEvent>
#include <QKeyEvent>

QLineEditBlocked::QLineEditBlocked(QWidget *parent) : QLineEditBlocked(QString(), parent) {}

QLineEditBlocked::QLineEditBlocked(const QString &text, QWidget *parent) : QLineEdit(text, parent)
{
    setToolTip(QStringLiteral("F2 или двойной щелчок: ввод вручную или автоматически"));
    setBlocked(true);
}

void QLineEditBlocked::mouseDoubleClickEvent(QMouseEvent *)
{
    turn();
}

void QLineEditBlocked::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier && !event->isAutoRepeat())
        return turn();
    QLineEdit::keyPressEvent(event);
}

void QLineEditBlocked::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange ||
        event->type() == QEvent::StyleChange)
        showState();
}

void QLineEditBlocked::turn()
{
    setBlocked(!isReadOnly());
    if (isReadOnly())
        emit blocked();
}

void QLineEditBlocked::setBlocked(bool on)
{
    setReadOnly(on);
    showState();
}

// The colour comes from around the field: in its own palette the one of before a change would stay. Setting
// a palette that is there already changes nothing, so that this ends.
void QLineEditBlocked::showState()
{
    const QPalette around = parentWidget() != nullptr ? parentWidget()->palette() : QPalette();
    QPalette colours;
    if (isReadOnly())
        colours.setColor(QPalette::Base, around.color(QPalette::Window));
    setPalette(colours);
}
