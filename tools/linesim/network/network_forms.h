#pragma once

#include <QDateTime>
#include <QString>

/// What is said on a switched-channel network, letter for letter, with "\r" and "\n" for line ends and the
/// register marks "|", "#", "&" for register changes.
namespace NetworkForms
{
/// The network's answer to a call that it does not put through, by its word ("busy"); empty for another word.
[[nodiscard]] QString result(const QString &word);
/// The same as a text signal ("signal-occ" gives "!>СИГНАЛ OCC"); empty for another word.
[[nodiscard]] QString refusalSignal(const QString &word);
/// The station's time stamp: "<" a carriage return, ">" a line feed, "d", "h", "m" the digits of \a now, each
/// pair of them taken from the left; anything else itself.
[[nodiscard]] QString timeStamp(const QString &format, const QDateTime &now);

/// An answerback with \a text, of 20 characters at least.
[[nodiscard]] QString answerback(const QString &text);
/// Where the switching centre of a type (0 to 4) gives its name.
struct CentreForm {
    int type = 0;
    bool lineFirst = false; ///< the opening is "\r\n#" in place of "#\r\n"
};
[[nodiscard]] QString shortCentre(const CentreForm &form);
[[nodiscard]] QString longCentre(const CentreForm &form);
[[nodiscard]] int longCentreLength(int type); ///< 0 for an unknown type
} // namespace NetworkForms
