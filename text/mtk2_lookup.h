#pragma once

#include "text/mtk2.h"

/// One code table prepared for conversion: what a character or a code turns into, without a search and
/// without branches, so that the speed does not depend on the mixture of registers. It is built once and
/// never changes, so threads read it without a lock.
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
    void decode(const uchar *codes, int count, QChar *out, int &reg) const;
    /// Encodes \a count characters to \a out, which has room for twice as many codes. Returns the end of
    /// what was written and moves \a reg.
    char *encode(const QChar *text, int count, char *out, int &reg) const;

private:
    static constexpr int Codes = 32;
    static constexpr int Bytes = 256;
    static constexpr int Pairs = Codes * Codes;

    /// What a character costs in each of the three registers, one field of 21 bits for each: six bits of
    /// shift to the field of the register that follows, two of length, eight of the first code, five of
    /// the second.
    using Steps = quint64;
    static constexpr unsigned StepBits = 21;

    struct Pair {
        QChar first, second;
    };

    void fillCells(MTKRows rows);
    void fillPairs();
    void fillCharacters(MTKRows rows);

    quint8 m_class[0x10000] = {}; ///< class of each character; 0 is dropped
    Steps m_steps[Bytes] = {};    ///< by class
    QChar m_character[Bytes];     ///< the character of the cell that gave the class
    QChar m_cells[3][Bytes];
    int m_selects[Bytes];        ///< register by code, -1 if the code selects none
    Pair m_pairCells[3 * Pairs]; ///< by register before them, then second code times 32 plus first
    quint32 m_pairKeeps[Pairs];  ///< what stays of the row's offset behind a pair: all or nothing
    quint32 m_pairSets[Pairs];   ///< what comes in its place
};
