// Tells ThreadSanitizer of the locks of QMutex. Qt is not instrumented and its mutex waits on a bare futex,
// so the sanitizer would take every text that a mutex guards for a race. Built only with VELDA_TSAN; the
// functions stand before those of the library and call them.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace
{
template <class Function> Function next(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}
} // namespace

void QMutex::lock()
{
    static const auto original = next<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    original(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout)
{
    static const auto original = next<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = original(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto original = next<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    original(this);
}
