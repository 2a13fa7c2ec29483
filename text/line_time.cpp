#include "text/line_time.h"

namespace
{
constexpr int HalfUnits = 15; // of a character
constexpr int SlowestBaud = 50;
constexpr int MinuteSeconds = 60, HourMinutes = 60;
} // namespace

qint64 lineSeconds(qint64 characters, int baud)
{
    const qint64 halfUnitsASecond = 2LL * (baud > 0 ? baud : SlowestBaud);
    return (characters * HalfUnits + halfUnitsASecond - 1) / halfUnitsASecond;
}

QString durationInWords(qint64 seconds)
{
    const qint64 minutes = (seconds + MinuteSeconds - 1) / MinuteSeconds;
    if (minutes < HourMinutes)
        return QStringLiteral("%1 мин").arg(minutes);
    return QStringLiteral("%1 ч %2 мин")
        .arg(minutes / HourMinutes)
        .arg(minutes % HourMinutes, 2, 10, QLatin1Char('0'));
}
