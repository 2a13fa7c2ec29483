#include "text/mtk2_lookup.h"

#include <algorithm>
#include <string>

namespace
{
constexpr int Cells = 32; // the filler behind them is never searched
constexpr char16_t LetterChe = u'Ч';
constexpr char16_t FigureForChe = u'4';

/// Code of \a c in \a row, or MTKNotFound.
int codeInRow(char16_t c, const char16_t *row)
{
    for (int code = 0; code < Cells; ++code)
        if (row[code] == c)
            return code;
    return MTKNotFound;
}

/// Register that the mark \a c selects, or -1.
int registerOfMark(char16_t c)
{
    switch (c) {
    case u'&': return 0;
    case u'|': return 1;
    case u'#': return 2;
    default: return -1;
    }
}

/// What the line carries for the character \a c of a text.
char16_t carriedAs(char16_t c)
{
    switch (const char16_t upper = upperMTK2(QChar(c)).unicode()) {
    case LetterChe: return FigureForChe;
    case u'>': return u'\n';
    case u'<': return u'\r';
    default: return upper;
    }
}

constexpr quint32 packStep(int code, int reg, bool changes, bool kept)
{
    return quint32(code) | quint32(reg) << 5 | quint32(changes) << 7 | quint32(kept) << 8;
}

quint32 makeStep(MTKRows rows, char16_t c, int reg)
{
    const int selected = registerOfMark(c);
    if (selected >= 0) // a redundant mark, too, is a code of the stream
        return packStep(MTK2Registr(selected), selected, false, true);
    for (int tries = 0; tries < 3; ++tries) {
        const int row = (reg + tries) % 3;
        const int code = codeInRow(c, rows[row]);
        if (code != MTKNotFound)
            return packStep(code, row, row != reg, true);
    }
    return packStep(0, reg, false, false);
}

/// All characters of the cells, in order.
std::u16string charactersOf(MTKRows rows)
{
    std::u16string all;
    for (int row = 0; row < 3; ++row)
        all.append(rows[row], Cells);
    std::sort(all.begin(), all.end());
    return all;
}

bool holds(const std::u16string &sorted, char16_t c)
{
    return std::binary_search(sorted.begin(), sorted.end(), c);
}
} // namespace

MTK2Lookup::MTK2Lookup(MTKRows rows)
{
    fillCells(rows);
    fillPages(rows);
}

const MTK2Lookup &MTK2Lookup::inForce()
{
    const MTKRows rows = fromMTKcode;
    if (rows == fromMTKcode_GEORGIAN) {
        static const MTK2Lookup georgian(fromMTKcode_GEORGIAN);
        return georgian;
    }
    if (rows == fromMTKcode_ARMENIAN) {
        static const MTK2Lookup armenian(fromMTKcode_ARMENIAN);
        return armenian;
    }
    static const MTK2Lookup russian(fromMTKcode_RUSSIAN);
    return russian;
}

void MTK2Lookup::fillCells(MTKRows rows)
{
    for (int row = 0; row < 3; ++row)
        for (int code = 0; code < PageSize; ++code)
            m_cells[row][code] = rows[row][qMin(code, Cells)];
    for (quint8 &selected : m_selects)
        selected = SelectsNone;
    for (quint8 reg = 0; reg < 3; ++reg)
        m_selects[MTK2Registr(reg)] = reg;
}

void MTK2Lookup::fillPages(MTKRows rows)
{
    quint32 dropped = 0;
    for (int reg = 0; reg < 3; ++reg)
        dropped |= packStep(0, reg, false, false) << (unsigned(reg) * StepBits);
    std::fill(&m_pages[0][0], &m_pages[0][0] + MaxPages * PageSize, dropped);

    const std::u16string cells = charactersOf(rows);
    for (unsigned c = 0; c <= 0xFFFF; ++c) {
        const char16_t carried = carriedAs(char16_t(c));
        if (holds(cells, carried))
            setEntry(char16_t(c), makeEntry(rows, carried));
        if (c == LetterChe || holds(cells, char16_t(c)))
            setEntry(char16_t(c), entry(QChar(c)) | Carried);
    }
}

quint32 MTK2Lookup::makeEntry(MTKRows rows, char16_t carried)
{
    quint32 made = 0;
    for (int reg = 0; reg < 3; ++reg)
        made |= makeStep(rows, carried, reg) << (unsigned(reg) * StepBits);
    return made;
}

void MTK2Lookup::setEntry(char16_t c, quint32 value)
{
    quint8 &page = m_pageOf[c >> 8];
    if (page == 0 && m_pageCount < MaxPages)
        page = quint8(m_pageCount++);
    if (page != 0)
        m_pages[page][c & 0xFF] = value;
}
