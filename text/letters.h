#pragma once

#include <QChar>

/// The Cyrillic alphabet А..Я, which has no Ё, as the encodings count it.
namespace Letters
{
constexpr ushort Begin = 0x0410;
constexpr ushort SmallBegin = 0x0430;
constexpr ushort Count = 32;

/// Position of a letter of either case, or -1.
constexpr int indexOf(ushort c)
{
    if (c >= Begin && c < Begin + Count)
        return c - Begin;
    if (c >= SmallBegin && c < SmallBegin + Count)
        return c - SmallBegin;
    return -1;
}

/// The capital letter at \a index.
constexpr QChar at(int index)
{
    return QChar(Begin + index);
}
} // namespace Letters
