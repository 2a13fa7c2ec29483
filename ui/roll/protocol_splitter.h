#pragma once

#include "records/journal_lines.h"

#include <QString>
#include <QStringList>

/// Cuts the lines of a journal anew for a roll that leaves something out: without the information, or parted
/// into what was received and what was sent. A line that an event or the width has cut becomes one again
/// first. Works on what is new only: a journal grows at its end alone, in its last line or by more lines.
class CProtocolSplitter
{
public:
    struct Rules {
        bool split = false;   ///< two lists instead of one
        bool showInfo = true; ///< keep information, in the one list
        int widthLimit = 0;   ///< text characters of a line; 0 is no limit

        bool operator==(const Rules &other) const
        {
            return split == other.split && showInfo == other.showInfo && widthLimit == other.widthLimit;
        }
    };

    /// Forgets everything and takes the journal from its start by \a rules at the next take().
    void restart(const Rules &rules);
    /// Those of the last restart().
    [[nodiscard]] const Rules &rules() const { return m_rules; }
    /// Brings the lists to the state of \a source; from its start, if it has done anything but grow.
    void take(const CJournalLines &source);

    /// Without the parting all text, with it what was received. Each line begins with a type mark.
    [[nodiscard]] const QStringList &received() const { return m_lists[0].lines; }
    /// What was sent, in the same form; empty without the parting.
    [[nodiscard]] const QStringList &sent() const { return m_lists[1].lines; }

private:
    struct List {
        QStringList lines;
        bool open = false; ///< the last line takes more text
        int mark = 0;      ///< type in force at its end
        int width = 0;     ///< text characters in it
    };

    void takeChar(QChar c); ///< the next character of the journal, its type marks among them
    void takeMark(int mark);
    void put(List &list, QChar c);     ///< begins a new line where the rules or the text ask for one
    [[nodiscard]] List *listInForce(); ///< null for what the parting leaves out

    Rules m_rules;
    List m_lists[2];
    int m_mark = 0;        ///< type in force in the source
    bool m_inInfo = false; ///< inside information
    CScanPosition m_line;  ///< line of the source that may still grow
    int m_offset = 0;      ///< characters of it already taken
};
