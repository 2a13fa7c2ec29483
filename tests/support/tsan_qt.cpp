// Tells ThreadSanitizer of the locks, the wait conditions, the ends of threads, the pools and the posted
// calls of Qt, which is not instrumented and waits on bare futexes: the sanitizer would take every text that
// a mutex guards, and everything that a joined thread has done, for a race. Built only with VELDA_TSAN; the
// functions stand before those of the library and call them.

#include <QEvent>
#include <QMutex>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace
{
template <class Function> Function next(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

void acquireIf(bool ended, const QThread *thread)
{
    if (ended)
        __tsan_acquire(const_cast<QThread *>(thread));
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

// The mutex is free while the condition is awaited.
bool QWaitCondition::wait(QMutex *mutex, unsigned long ms)
{
    using Wait = bool (*)(QWaitCondition *, QMutex *, unsigned long);
    static const auto original = next<Wait>("_ZN14QWaitCondition4waitEP6QMutexm");
    __tsan_release(mutex);
    const bool woken = original(this, mutex, ms);
    __tsan_acquire(mutex);
    return woken;
}

bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    using Wait = bool (*)(QWaitCondition *, QMutex *, QDeadlineTimer);
    static const auto original = next<Wait>("_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_release(mutex);
    const bool woken = original(this, mutex, deadline);
    __tsan_acquire(mutex);
    return woken;
}

// What a thread has done comes before what follows its end, which it tells by a signal of its own.
void QThread::start(Priority priority)
{
    static const auto original = next<void (*)(QThread *, Priority)>("_ZN7QThread5startENS_8PriorityE");
    QObject::connect(
        this, &QThread::finished, this, [this] { __tsan_release(this); }, Qt::DirectConnection);
    original(this, priority);
}

bool QThread::wait(unsigned long ms)
{
    static const auto original = next<bool (*)(QThread *, unsigned long)>("_ZN7QThread4waitEm");
    const bool ended = original(this, ms);
    acquireIf(ended, this);
    return ended;
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto original =
        next<bool (*)(QThread *, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = original(this, deadline);
    acquireIf(ended, this);
    return ended;
}

bool QThread::isFinished() const
{
    static const auto original = next<bool (*)(const QThread *)>("_ZNK7QThread10isFinishedEv");
    const bool ended = original(this);
    acquireIf(ended, this);
    return ended;
}

// What stands before a start comes before the work, and the work before the end of a wait for it.
void QThreadPool::start(std::function<void()> work, int priority)
{
    using Start = void (*)(QThreadPool *, std::function<void()>, int);
    static const auto original = next<Start>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    static char starts; // one of all pools: what is captured may be read only behind it
    std::function<void()> told = [this, work = std::move(work)] {
        __tsan_acquire(&starts);
        work();
        __tsan_release(this);
    };
    __tsan_release(&starts);
    original(this, std::move(told), priority);
}

bool QThreadPool::waitForDone(int ms)
{
    static const auto original = next<bool (*)(QThreadPool *, int)>("_ZN11QThreadPool11waitForDoneEi");
    const bool done = original(this, ms);
    if (done)
        __tsan_acquire(this);
    return done;
}

// What stands before a call into another thread comes before what is called there.
bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *slot, Qt::ConnectionType type,
                                   void *result)
{
    using Invoke = bool (*)(QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *);
    static const auto original =
        next<Invoke>("_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14"
                     "ConnectionTypeEPv");
    __tsan_release(object);
    return original(object, slot, type, result);
}

bool QObject::event(QEvent *event)
{
    static const auto original = next<bool (*)(QObject *, QEvent *)>("_ZN7QObject5eventEP6QEvent");
    if (event->type() == QEvent::MetaCall)
        __tsan_acquire(this);
    return original(this, event);
}
