#pragma once

#include "app/options.h"
#include "text/mtk2.h"

/// The national language of the options for the length of a scope; none is set behind it.
class Language
{
public:
    enum Number { None = 0, Tatar = 1, Georgian = 2, NotOffered = 3, Armenian = 4 };

    explicit Language(int number) { select(number); }
    ~Language() { select(None); }
    Language(const Language &) = delete;
    Language &operator=(const Language &) = delete;

    static void select(int number)
    {
        Options.nationalLanguageUse = number;
        initMTK2Table();
    }
};
