#include "tests/firmware/dtr_watch.h"

#include <cstdarg>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
DtrWatch *watch = nullptr; // the program has no other thread with a serial port
} // namespace

DtrWatch::DtrWatch()
{
    m_clock.start();
    watch = this;
}

DtrWatch::~DtrWatch()
{
    watch = nullptr;
}

/// The program's own, which the linker prefers to the library's.
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    const bool moves = request == TIOCMBIS || request == TIOCMBIC;
    if (moves && watch != nullptr && (*static_cast<const int *>(argument) & TIOCM_DTR) != 0)
        watch->note(request == TIOCMBIS);
    return int(::syscall(SYS_ioctl, descriptor, request, argument));
}
