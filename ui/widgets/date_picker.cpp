#include "ui/widgets/date_picker.h"

#include "app/clock.h"

#include <QKeyEvent>

CDatePicker::CDatePicker(const char *name, const QDate &day) : QDateEdit(day)
{
    setObjectName(QString::fromLatin1(name));
    setDisplayFormat(CTime::formatDD_MM_YYYY);
    setCalendarPopup(true);
    setKeyboardTracking(false); // the days that are passed through while typing are meant by nobody
}

void CDatePicker::keyPressEvent(QKeyEvent *event)
{
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (tab && (event->modifiers() & Qt::ControlModifier) != 0)
        return event->ignore();
    QDateEdit::keyPressEvent(event);
}
