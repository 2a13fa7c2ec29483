#pragma once

#include "journal_file.h"
#include "place.h"

#include <QVector>

/// A message of the line, from its start mark to its end mark, without them.
struct CLineMessage {
    CPlace begin;    ///< of the start mark
    CPlace end;      ///< of the end mark; nowhere: the message is not at its end
    int number = -1; ///< three figures behind the start mark; -1: it is none of the numbered ones
    QString text;    ///< behind the start mark, with the number and the register marks
};

/// The text of one direction of the line, as one or more days' journals have it, one after the other.
class CLineText
{
public:
    explicit CLineText(ProtocolTypes type) : m_type(type) {}

    void append(const CJournalFile &journal);
    /// The messages, in order. With \a fromLastStart one that a new start mark interrupts counts from there.
    /// A program that starts anew has forgotten what it had of a message.
    [[nodiscard]] QVector<CLineMessage> messages(bool fromLastStart) const;
    /// Whether \a letters, in the form of lettersOf(), were on the line, at best behind what was found last.
    [[nodiscard]] bool holds(const QString &letters);

private:
    struct Part {
        int position; ///< in the text
        CPlace place;
    };
    void messagesOf(int from, int to, bool fromLastStart, QVector<CLineMessage> &found) const;
    [[nodiscard]] CLineMessage message(int start, int end, int to) const;
    [[nodiscard]] CPlace placeOf(int position) const;

    ProtocolTypes m_type;
    QString m_text; ///< with carriage returns and line feeds
    QVector<Part> m_parts;
    QVector<int> m_cuts; ///< positions at which the program started anew
    QString m_letters;   ///< of the text; made when first asked for
    int m_sought = 0;    ///< position in the letters behind what was found last
};

/// What of \a text is the same however it is stored: letters and figures, in upper case, with 4 for Ч, as the
/// line confuses the two.
[[nodiscard]] QString lettersOf(const QString &text);
