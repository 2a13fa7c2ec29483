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

    /// What one character costs on the line when a stream stands in a given register.
    class Step
    {
    public:
        Step(unsigned bits) : m_bits(bits) {}
        [[nodiscard]] char code() const { return char(m_bits & 31U); }
        [[nodiscard]] int reg() const { return int(m_bits >> 5 & 3U); }     ///< register afterwards
        [[nodiscard]] unsigned changes() const { return m_bits >> 7 & 1U; } ///< 1: its code goes first
        [[nodiscard]] unsigned kept() const { return m_bits >> 8 & 1U; }    ///< 0: nothing is written

    private:
        unsigned m_bits;
    };

    [[nodiscard]] Step step(QChar c, int reg) const { return entry(c) >> (unsigned(reg) * StepBits); }
    /// Whether \a c itself, not only its upper case, stands in a cell or travels as one.
    [[nodiscard]] bool carries(QChar c) const { return (entry(c) & Carried) != 0; }
    /// Register after \a code was received in \a reg.
    [[nodiscard]] int regAfter(unsigned char code, int reg) const
    {
        const int selected = m_selects[code];
        return selected == SelectsNone ? reg : selected;
    }
    /// Cell \a code of row \a reg; codes that the line cannot carry give the filler.
    [[nodiscard]] QChar cell(unsigned char code, int reg) const { return QChar(m_cells[reg][code]); }

private:
    // An entry holds a step for each of the three registers and whether the character is carried.
    static constexpr unsigned StepBits = 9;
    static constexpr quint32 Carried = 1U << 27;
    static constexpr int PageSize = 256;
    static constexpr int MaxPages = 16; // about six are in use
    static constexpr quint8 SelectsNone = 3;

    [[nodiscard]] quint32 entry(QChar c) const
    {
        return m_pages[m_pageOf[c.unicode() >> 8]][c.unicode() & 0xFF];
    }
    void fillCells(MTKRows rows);
    void fillPages(MTKRows rows);
    [[nodiscard]] static quint32 makeEntry(MTKRows rows, char16_t carried);
    void setEntry(char16_t c, quint32 value);

    int m_pageCount = 1; // page 0 holds nothing
    quint8 m_pageOf[PageSize] = {};
    quint32 m_pages[MaxPages][PageSize] = {};
    char16_t m_cells[3][PageSize] = {};
    quint8 m_selects[PageSize] = {};
};
