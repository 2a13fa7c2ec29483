#include "ui/widgets/date_picker.h"

#include "app/clock.h"

CDatePicker::CDatePicker(const char *name, const QDate &day) : QDateEdit(day)
{
    setObjectName(QString::fromLatin1(name));
    setDisplayFormat(CTime::formatDD_MM_YYYY);
    setCalendarPopup(true);
    setKeyboardTracking(false); // the days that are passed through while typing are meant by nobody
}
