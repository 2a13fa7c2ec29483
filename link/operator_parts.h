#pragma once

#include <QString>
#include <QVector>

/// Which parts of a text are the operator's; every other character is a procedure's. It holds lengths alone:
/// the text stands beside it, and whoever changes the one tells the other.
class COperatorParts
{
public:
    /// The characters from \a begin up to \a end, which lie behind all known parts, are the operator's.
    void add(int begin, int end);
    /// The first \a n characters leave the text; what is known of them is returned.
    [[nodiscard]] COperatorParts takeHead(int n);
    /// The text has no more than \a size characters; what was known of those behind them is forgotten.
    void limitTo(int size);
    /// \a text with CR and LF where the operator's parts show them as "<" and ">".
    [[nodiscard]] QString withLineEnds(QString text) const;

private:
    struct Part {
        int begin;
        int end; ///< behind its last character
    };
    QVector<Part> m_parts; ///< rising, none empty, no two touching
};
