#include "text/mtk2_lookup.h"

#include <algorithm>
#include <string>

namespace
{
constexpr int Cells = 32; // the filler behind them is never searched
constexpr char16_t LetterChe = u'Ч';
constexpr char16_t FigureForChe = u'4';
constexpr char16_t Dropped = 0; // stands in no cell

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

/// All characters of the cells, each once.
std::u16string charactersOf(MTKRows rows)
{
    std::u16string all;
    for (int row = 0; row < 3; ++row)
        all.append(rows[row], Cells);
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}
} // namespace

MTK2Lookup::MTK2Lookup(MTKRows rows)
{
    fillCells(rows);
    fillCharacters(rows);
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

bool MTK2Lookup::carries(QChar c) const
{
    const quint8 found = m_class[c.unicode()];
    return found != 0 && (m_character[found] == c || c == LetterChe);
}

QChar MTK2Lookup::decode(unsigned char code, int &reg) const
{
    QChar decoded;
    const char byte = char(code);
    decode(&byte, 1, &decoded, reg);
    return decoded;
}

void MTK2Lookup::decode(const char *codes, int count, QChar *out, int &reg) const
{
    const QChar *const cells = m_cells[0];
    unsigned row = unsigned(reg) * Bytes; // a local, so that the compiler knows that no store changes it
    for (int i = 0; i < count; ++i) {
        const auto code = static_cast<unsigned char>(codes[i]);
        row = (row & m_keeps[code]) | m_selects[code];
        out[i] = cells[row | code];
    }
    reg = int(row / Bytes);
}

char *MTK2Lookup::encode(const QString &text, char *out, int &reg) const
{
    int state = reg;
    for (const QChar c : text) {
        const Step &step = m_steps[m_class[c.unicode()]][state];
        out[0] = step.codes[0]; // both, for a copy of one or two would cost a branch
        out[1] = step.codes[1];
        out += step.length;
        state = step.reg;
    }
    reg = state;
    return out;
}

void MTK2Lookup::fillCells(MTKRows rows)
{
    std::fill(std::begin(m_keeps), std::end(m_keeps), ~0U);
    std::fill(std::begin(m_selects), std::end(m_selects), 0U);
    for (int reg = 0; reg < 3; ++reg) {
        m_keeps[MTK2Registr(reg)] = 0;
        m_selects[MTK2Registr(reg)] = unsigned(reg) * Bytes;
        for (int code = 0; code < Bytes; ++code)
            m_cells[reg][code] = QChar(rows[reg][qMin(code, Cells)]);
    }
}

/// The first row from that of \a reg on, in their cycle, that holds the character decides.
MTK2Lookup::Step MTK2Lookup::stepOf(MTKRows rows, char16_t c, int reg)
{
    const int selected = registerOfMark(c);
    if (selected >= 0) // a redundant mark, too, is a code of the stream
        return {{char(MTK2Registr(selected))}, 1, quint8(selected)};
    for (int tries = 0; tries < 3; ++tries) {
        const int row = (reg + tries) % 3;
        const int code = codeInRow(c, rows[row]);
        if (code == MTKNotFound)
            continue;
        if (row == reg)
            return {{char(code)}, 1, quint8(reg)};
        return {{char(MTK2Registr(row)), char(code)}, 2, quint8(row)};
    }
    return {{}, 0, quint8(reg)};
}

void MTK2Lookup::fillCharacters(MTKRows rows)
{
    const std::u16string cells = Dropped + charactersOf(rows);
    for (size_t i = 0; i < cells.size(); ++i) {
        m_character[i] = QChar(cells[i]);
        for (int reg = 0; reg < 3; ++reg)
            m_steps[i][reg] = stepOf(rows, cells[i], reg);
    }
    for (unsigned c = 0; c <= 0xFFFF; ++c) {
        const size_t found = cells.find(carriedAs(char16_t(c)));
        m_class[c] = found == std::u16string::npos ? 0 : quint8(found);
    }
}
