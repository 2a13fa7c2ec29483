#pragma once

#include <QString>

/// Helpers of the switched-channel procedure. No state.
class CUtilsSKK
{
public:
    /// Reads a list of numbers parted by commas: digits and "+" go to \a result, a comma only behind an item
    /// of more than 5 characters. Returns the count of numbers.
    static int checkCallNumber(const QString &input, QString &result);

    /// Position behind the first time stamp of the form \a format at or behind \a from, -1 if there is none
    /// or the form is empty. In a form "<" is a carriage return or "<", ">" a line feed or ">", "d", "h" and
    /// "m" a digit, anything else itself. A form that begins with a digit is tried once, at the first digit
    /// of the whole text.
    [[nodiscard]] static int behindTimeStamp(const QString &text, int from, const QString &format);
};
