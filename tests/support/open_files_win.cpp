#include "tests/support/open_files.h"

#include <windows.h>

int openFiles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return int(count);
}
