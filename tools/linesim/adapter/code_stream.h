#pragma once

#include "tools/linesim/serial/mtk2_code.h"

/// Text to codes, with the register from one text to the next.
class CodeWriter
{
public:
    /// The codes of \a text, in which "<" and ">" are CR and LF too. What has no code is added to \a left.
    [[nodiscard]] QByteArray write(const QString &text, QString *left = nullptr);
    void restart() { m_register = Mtk2::Latin; }

private:
    Mtk2::Register m_register = Mtk2::Latin;
};

/// Codes to the text that the other side meant. A change of register that its next sign needs says nothing
/// and is left out, as text without registers has it; one that a message asks for stays: a change that was
/// not needed, one in front of a space, a line end or another change, one back from a change that stayed,
/// and, held until that shows, one in front of "*" or of a word that messages open with behind a mark.
class CodeReader
{
public:
    /// The text that is settled with \a code.
    [[nodiscard]] QString take(quint8 code);
    /// Nothing follows for now: what was held.
    [[nodiscard]] QString flush();
    void restart() { *this = CodeReader(); }

private:
    [[nodiscard]] QString takeMark(Mtk2::Register next);
    [[nodiscard]] QString settle(QChar c);
    [[nodiscard]] bool mayStay() const;
    [[nodiscard]] QString keepMark();
    [[nodiscard]] QString release(bool withMark);

    Mtk2::Register m_register = Mtk2::Latin;
    Mtk2::Register m_before = Mtk2::Latin; // the one in front of the mark
    bool m_mark = false;                   // a change whose meaning is open
    QString m_held;                        // signs behind it
    int m_shown = -1;                      // register of the last mark that stayed; -1 none
};
