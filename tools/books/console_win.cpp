#include "console.h"

#include <windows.h>

void prepareConsole()
{
    SetConsoleOutputCP(CP_UTF8);
}
