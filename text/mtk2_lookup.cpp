#include "text/mtk2_lookup.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
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

/// One field of the steps: \a reg behind it and the codes that are written.
quint64 packStep(unsigned stepBits, int reg, const QByteArray &codes)
{
    const quint64 first = codes.isEmpty() ? 0 : uchar(codes.at(0));
    const quint64 second = codes.size() < 2 ? 0 : uchar(codes.at(1));
    return quint64(reg) * stepBits | quint64(codes.size()) << 6 | first << 8 | second << 16;
}

quint64 makeStep(unsigned stepBits, MTKRows rows, char16_t c, int reg)
{
    const int selected = registerOfMark(c);
    if (selected >= 0) // a redundant mark, too, is a code of the stream
        return packStep(stepBits, selected, QByteArray(1, char(MTK2Registr(selected))));
    for (int tries = 0; tries < 3; ++tries) {
        const int row = (reg + tries) % 3;
        const int code = codeInRow(c, rows[row]);
        if (code == MTKNotFound)
            continue;
        const QByteArray change = row == reg ? QByteArray() : QByteArray(1, char(MTK2Registr(row)));
        return packStep(stepBits, row, change + char(code));
    }
    return packStep(stepBits, reg, QByteArray());
}

quint64 makeSteps(unsigned stepBits, MTKRows rows, char16_t c)
{
    quint64 steps = 0;
    for (int reg = 0; reg < 3; ++reg)
        steps |= makeStep(stepBits, rows, c, reg) << (unsigned(reg) * stepBits);
    return steps;
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
    fillPairs();
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
    if (m_selects[code] >= 0)
        reg = m_selects[code];
    return m_cells[reg][code];
}

void MTK2Lookup::decode(const uchar *codes, int count, QChar *out, int &reg) const
{
    constexpr quint64 BeyondFiveBits = 0xE0E0E0E0E0E0E0E0;
    int i = 0;
    auto row = unsigned(reg * Pairs);
    for (; i + 8 <= count; i += 8) {
        const auto eightCodes = qFromLittleEndian<quint64>(codes + i);
        if ((eightCodes & BeyondFiveBits) != 0)
            break;
        quint64 pairs = (eightCodes & 0x001F001F001F001F) | (eightCodes >> 3 & 0x03E003E003E003E0);
        for (int at = i; at < i + 8; at += 2, pairs >>= 16) {
            const auto pair = unsigned(pairs & 0xFFFF);
            std::memcpy(static_cast<void *>(out + at), &m_pairCells[row + pair], sizeof(Pair));
            row = (row & m_pairKeeps[pair]) | m_pairSets[pair];
        }
    }
    reg = int(row / Pairs);
    for (; i < count; ++i) // the last few, or all behind a code that no line sends
        out[i] = decode(codes[i], reg);
}

char *MTK2Lookup::encode(const QChar *text, int count, char *out, int &reg) const
{
    unsigned shift = unsigned(reg) * StepBits;
    for (int i = 0; i < count; ++i) {
        const quint64 step = m_steps[m_class[text[i].unicode()]] >> shift;
        // Two codes are always stored, and the end moves past those that count.
        qToLittleEndian(quint16(step >> 8 & 0x1FFF), out);
        out += step >> 6 & 3;
        shift = step & 63;
    }
    reg = int(shift / StepBits);
    return out;
}

void MTK2Lookup::fillCells(MTKRows rows)
{
    std::fill(std::begin(m_selects), std::end(m_selects), -1);
    for (int reg = 0; reg < 3; ++reg) {
        m_selects[MTK2Registr(reg)] = reg;
        for (int code = 0; code < Bytes; ++code)
            m_cells[reg][code] = QChar(rows[reg][qMin(code, Cells)]);
    }
}

void MTK2Lookup::fillPairs()
{
    for (int i = 0; i < 3 * Pairs; ++i) {
        int reg = i / Pairs;
        const QChar first = decode(uchar(i % Codes), reg);
        m_pairCells[i] = {first, decode(uchar(i / Codes % Codes), reg)};
    }
    for (int pair = 0; pair < Pairs; ++pair) {
        const int first = m_selects[pair % Codes], second = m_selects[pair / Codes];
        const int selected = second < 0 ? first : second;
        m_pairKeeps[pair] = selected < 0 ? ~0U : 0U;
        m_pairSets[pair] = selected < 0 ? 0U : unsigned(selected * Pairs);
    }
}

void MTK2Lookup::fillCharacters(MTKRows rows)
{
    const std::u16string cells = charactersOf(rows);
    m_steps[0] = makeSteps(StepBits, rows, Dropped);
    for (size_t i = 0; i < cells.size(); ++i) {
        m_character[i + 1] = QChar(cells[i]);
        m_steps[i + 1] = makeSteps(StepBits, rows, cells[i]);
    }
    for (unsigned c = 0; c <= 0xFFFF; ++c) {
        const auto found = std::lower_bound(cells.begin(), cells.end(), carriedAs(char16_t(c)));
        if (found != cells.end() && *found == carriedAs(char16_t(c)))
            m_class[c] = quint8(found - cells.begin() + 1);
    }
}
