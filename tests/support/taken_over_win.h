#pragma once

#include <windows.h>

/// Has the toolkit call \a replacement where its library names the system's function \a name; always true.
bool takeOver(const char *name, ULONG_PTR replacement);

template <class Result, class... Parameters>
bool takeOver(const char *name, Result(WINAPI *replacement)(Parameters...))
{
    return takeOver(name, reinterpret_cast<ULONG_PTR>(replacement));
}
