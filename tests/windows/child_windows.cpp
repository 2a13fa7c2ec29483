#include "tests/windows/child_windows.h"

#include <vector>

#include <windows.h>

namespace
{
constexpr UINT AnswerMs = 60000;

struct Search {
    DWORD process;
    std::vector<HWND> found;
};

BOOL CALLBACK take(HWND window, LPARAM parameter)
{
    auto *search = reinterpret_cast<Search *>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search->process)
        search->found.push_back(window);
    return TRUE;
}

std::vector<HWND> windowsOf(const Child &child)
{
    Search search = {DWORD(child.process.processId()), {}};
    EnumWindows(take, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

QString titleOf(HWND window)
{
    wchar_t title[200] = {};
    const int size = GetWindowTextW(window, title, 200);
    return QString::fromWCharArray(title, size);
}
} // namespace

QStringList ChildWindows::titles(const Child &child)
{
    QStringList all;
    for (const HWND window : windowsOf(child))
        if (IsWindowVisible(window) != 0)
            all << titleOf(window);
    return all;
}

void ChildWindows::close(const Child &child)
{
    for (const HWND window : windowsOf(child))
        if (IsWindowVisible(window) != 0)
            PostMessageW(window, WM_CLOSE, 0, 0);
}

bool ChildWindows::endSession(const Child &child)
{
    for (const HWND window : windowsOf(child)) {
        DWORD_PTR agreed = FALSE;
        const LRESULT answered =
            SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, AnswerMs, &agreed);
        if (answered != 0 && agreed == FALSE)
            return false;
    }
    return true;
}
