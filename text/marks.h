#pragma once

#include <QString>

/// The marks that a telegram stands between, on every line. The Russian and the Latin ones mean the same;
/// what is sent has the Russian ones.
namespace Marks
{
const QString Start = QStringLiteral("ЗЦЗЦ ");
const QString LatinStart = QStringLiteral("ZCZC ");
const QString End = QStringLiteral("НННН  "); ///< with two blanks
const QString LatinEnd = QStringLiteral("NNNN  ");

constexpr int StartLength = 5;
constexpr int EndLength = 6;
} // namespace Marks
