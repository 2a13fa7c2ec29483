#pragma once

#include "text/mtk2.h"

/// One code table prepared for conversion: what a character or a code turns into, without a search. It is
/// built once and never changes, so threads read it without a lock.
class MTK2Lookup
{
public:
    explicit MTK2Lookup(MTKRows rows);

    /// The lookup of the table that fromMTKcode points to at this moment.
    [[nodiscard]] static const MTK2Lookup &inForce();

    /// Whether \a c itself, not only its upper case, stands in a cell or travels as one.
    [[nodiscard]] bool carries(QChar c) const;
    /// Decodes one code and moves \a reg; a code that the line cannot carry gives the filler.
    [[nodiscard]] QChar decode(unsigned char code, int &reg) const;
    /// Decodes \a count codes into as many characters at \a out and moves \a reg.
    void decode(const char *codes, int count, QChar *out, int &reg) const;
    /// Encodes \a text to \a out, which has room for twice as many codes. Returns the end of what was written
    /// and moves \a reg.
    [[nodiscard]] char *encode(const QString &text, char *out, int &reg) const;

private:
    static constexpr int Bytes = 256; ///< codes that the line cannot carry among them

    /// What a character costs in one register.
    struct Step {
        char codes[2] = {};
        quint8 length = 0; ///< codes that count, 0 to 2
        quint8 reg = 0;    ///< register behind them
    };

    [[nodiscard]] static Step stepOf(MTKRows rows, char16_t c, int reg);
    void fillCells(MTKRows rows);
    void fillCharacters(MTKRows rows);

    quint8 m_class[0x10000] = {}; ///< of each character, the place of its steps; that of 0 drops it
    Step m_steps[Bytes][3];       ///< by class and register
    QChar m_character[Bytes];     ///< the character of the cell that gave the class
    QChar m_cells[3][Bytes];      ///< by register and code
    // By code, what it does to the row in m_cells of the register in force: what stays of it, all bits or
    // none, and what comes in its place. A branch would be foreseen by no processor.
    unsigned m_keeps[Bytes];
    unsigned m_selects[Bytes];
};
