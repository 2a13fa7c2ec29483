// The line of a side-car record. It needs no clock, so whoever only reads records takes this alone.

#include "app/clock.h"
#include "records/digits.h"
#include "records/file_info.h"

#include <QStringList>

namespace
{
constexpr int FieldCount = 7;

/// Reads CTime::formatDD_MM_YYYY_HH_MM. QDateTime::fromString() would take most of the time of a queue's
/// scan, so what has the regular places is read here, and only the rest is left to it.
QDateTime timeOf(const QString &text)
{
    const bool regular = text.size() == 16 && text.at(2) == QLatin1Char('.') &&
                         text.at(5) == QLatin1Char('.') && text.at(10) == QLatin1Char(' ') &&
                         text.at(13) == QLatin1Char(':');
    if (!regular)
        return QDateTime::fromString(text, CTime::formatDD_MM_YYYY_HH_MM);
    const int year = digitsAt(text, 6, 4);
    if (year < 0) // which a date would take for the year before the first
        return QDateTime();
    const QDate date(year, digitsAt(text, 3, 2), digitsAt(text, 0, 2));
    const QTime time(digitsAt(text, 11, 2), digitsAt(text, 14, 2));
    return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}
} // namespace

void CFileInfo::takeLine(QByteArray line)
{
    line = QByteArray(line.constData()); // a zero ends the text, before the line's end is looked for
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    const QStringList fields = QString::fromUtf8(line).split(QLatin1Char('|'));
    number = fields.value(0);
    toCKS = fields.value(1) == QLatin1String("C");
    sendTime = timeOf(fields.value(2));
    // The letter is written to field 3, but field 5 is asked, which holds "B" or "N". So the flag lasts until
    // the next scan, and no list or procedure can come to depend on what foreign records hold in field 3.
    qFlag = fields.value(5) == QLatin1String("q");
    trys = fields.value(4).toInt();
    bad = fields.value(5) == QLatin1String("B");
    // A text that holds the separator itself makes more fields and is not taken.
    resultText = fields.size() == FieldCount ? fields.last() : QString();
}
