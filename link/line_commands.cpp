// The grammar of the control commands inside text.

#include "link/tlg_thread.h"

namespace
{
int dialLength(const QString &s)
{
    int end = 2;
    while (end < s.size() && s[end].isDigit())
        ++end;
    if (end - 2 > CTlgThread::MaxDialDigits)
        return 1;
    if (end == s.size())
        return 0;
    if (s[end] == QLatin1Char('+') && ++end == s.size())
        return 0;
    return s[end] == QLatin1Char('@') ? end + 1 : end;
}

int flowReportLength(const QString &s)
{
    if (s.size() < 4)
        return 0;
    return s[2].isDigit() && s[3] == QLatin1Char('*') ? 4 : 1;
}
} // namespace

int CTlgThread::loopCmdLength(const QString &s)
{
    if (s.size() < 2 || s[0] != QLatin1Char('@'))
        return 0;
    const ushort second = s[1].unicode();
    switch (second) {
    case 'C':
    case 'E':
    case 'H': return 2;
    case 'N':
    case 'n': return dialLength(s);
    default: return second >= '0' && second <= '9' ? flowReportLength(s) : 1;
    }
}

int CTlgThread::testCmdLength(const QString &s)
{
    const int length = loopCmdLength(s);
    const bool operatorKey = length == 1 && (s[1] == QLatin1Char('L') || s[1] == QLatin1Char('V'));
    return operatorKey ? 2 : length;
}
