#pragma once

#include <QByteArray>
#include <QString>

/// The 5-bit telegraph code with Russian letters. A stream has a register, which its owner keeps; a change of
/// register is a code of its own and stands in text as a mark: "&" Latin, "|" letters, "#" figures.
namespace Mtk2
{
enum Register { Latin, Letters, Figures };

constexpr char LatinCode = 0x1F;
constexpr char LettersCode = 0x00;
constexpr char FiguresCode = 0x1B;

/// The text of \a codes, of which the low five bits count.
[[nodiscard]] QString decoded(const QByteArray &codes, Register &state);
/// The codes of \a text, with those for a change of register where it needs one. A mark gives its code even
/// if the register is in force; Ч goes as 4; what the code cannot carry is left out.
[[nodiscard]] QByteArray encoded(const QString &text, Register &state);
} // namespace Mtk2
