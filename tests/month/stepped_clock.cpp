// Steps the clock of the calendar, and not that of elapsed time, as NTP or an operator does: in front of the
// system's own calls, and of a false clock's, it adds to the time of day what stands in the file
// STEPPED_CLOCK, milliseconds as 8 bytes of the machine. The file may change at any time.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace
{
constexpr int64_t NsOfMs = 1000000;
constexpr int64_t NsOfSecond = 1000000000;

const volatile int64_t *mapped()
{
    const char *path = std::getenv("STEPPED_CLOCK");
    const int file = path != nullptr ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0)
        return nullptr;
    void *memory = mmap(nullptr, sizeof(int64_t), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return memory == MAP_FAILED ? nullptr : static_cast<const volatile int64_t *>(memory);
}

int64_t offsetMs()
{
    static const volatile int64_t *const offset = mapped();
    return offset != nullptr ? *offset : 0;
}

template <class Call> Call next(const char *name)
{
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}
} // namespace

extern "C" {
int clock_gettime(clockid_t clock, timespec *moment) noexcept
{
    static const auto call = next<int (*)(clockid_t, timespec *)>("clock_gettime");
    const int result = call(clock, moment);
    if (result != 0 || (clock != CLOCK_REALTIME && clock != CLOCK_REALTIME_COARSE))
        return result;
    const int64_t ns = moment->tv_sec * NsOfSecond + moment->tv_nsec + offsetMs() * NsOfMs;
    moment->tv_sec = ns / NsOfSecond;
    moment->tv_nsec = ns % NsOfSecond;
    return result;
}

int gettimeofday(timeval *moment, void *zone) noexcept
{
    static const auto call = next<int (*)(timeval *, void *)>("gettimeofday");
    const int result = call(moment, zone);
    if (result != 0)
        return result;
    const int64_t us = moment->tv_sec * 1000000 + moment->tv_usec + offsetMs() * 1000;
    moment->tv_sec = us / 1000000;
    moment->tv_usec = us % 1000000;
    return result;
}

time_t time(time_t *moment) noexcept
{
    timeval now{};
    gettimeofday(&now, nullptr);
    if (moment != nullptr)
        *moment = now.tv_sec;
    return now.tv_sec;
}
}
