#include "text/call_numbers.h"

CallNumbers readCallNumbers(const QString &typed)
{
    CallNumbers numbers;
    int length = 0; // of the last number
    for (const QChar c : typed) {
        if (c == QLatin1Char(',') && length >= ShortestCallNumber) {
            ++numbers.count;
            length = 0;
        } else if (c.isDigit() || c == QLatin1Char('+')) {
            ++length;
        } else {
            continue;
        }
        numbers.text += c;
    }
    numbers.complete = length >= ShortestCallNumber;
    return numbers;
}
