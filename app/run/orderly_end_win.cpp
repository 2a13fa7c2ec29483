#include "app/run/orderly_end.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <windows.h>

namespace
{
constexpr DWORD EndMilliseconds = 10000;

/// Runs on a thread of the system's. After a closed console, a log-off or a shut-down the process is ended
/// when this returns, so it stays until the program has gone by itself.
BOOL WINAPI onConsoleEvent(DWORD event)
{
    QMetaObject::invokeMethod(qApp, requestOrderlyEnd, Qt::QueuedConnection);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(EndMilliseconds);
    return TRUE;
}
} // namespace

void installSystemRequests()
{
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}
