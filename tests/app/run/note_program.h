#pragma once

#include <QString>

class Desk;

/// A program in the directory of \a desk that writes its first argument, or "none", as the line of
/// "note.txt".
[[nodiscard]] QString noteProgram(const Desk &desk);
