#pragma once

#include <QString>

#include <functional>

/// What happens at a far end, one line per event: the event's name, ": " and the detail, in UTF-8, so that a
/// script can read it. A breach of the link's rules is the event "violation" and is counted.
class EventLog
{
public:
    using Sink = std::function<void(const QString &line)>;

    /// Lines go to \a sink; without one to standard output, each flushed at once.
    explicit EventLog(Sink sink = Sink());

    void event(const QString &name, const QString &detail = QString());
    void violation(const QString &detail);

    int violations = 0; ///< breaches since the start

private:
    Sink m_sink;
};

/// \a text on one line: CR, LF, backslash and other control characters as "\r", "\n", "\\", "\x05".
[[nodiscard]] QString escaped(const QString &text);
/// The reverse of escaped(); an unknown escape stays as it is.
[[nodiscard]] QString unescaped(const QString &text);
