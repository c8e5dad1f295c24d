// Tells the thread sanitizer of the locks that our code takes from Qt, which is not instrumented: without
// this everything guarded by a QMutex would look unguarded. These functions take the place of Qt's own and
// call them.
#include <QDeadlineTimer>
#include <QMutex>
#include <QSemaphore>
#include <QWaitCondition>

#include <sanitizer/tsan_interface.h>

#include <dlfcn.h>

namespace
{

template <typename Function>
Function Original(const char* symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

extern "C" const char* __tsan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    // The distribution's Qt, libdbus and glib are not instrumented either; what they do among themselves and
    // with the C library looks like races. What our own code and Qt's headers do is watched all the same.
    return "ignore_noninstrumented_modules=1";
}

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto original = Original<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    original(this);
    __tsan_acquire(this);
}

void QMutex::unlock() Q_DECL_NOTHROW
{
    static const auto original = Original<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    original(this);
}

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline)
{
    static const auto original = Original<bool (*)(QWaitCondition*, QMutex*, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_release(mutex);
    const bool woken = original(this, mutex, deadline);
    __tsan_acquire(mutex);
    return woken;
}

void QSemaphore::release(int n)
{
    static const auto original = Original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    original(this, n);
}

bool QSemaphore::tryAcquire(int n, int timeout)
{
    static const auto original = Original<bool (*)(QSemaphore*, int, int)>("_ZN10QSemaphore10tryAcquireEii");
    const bool acquired = original(this, n, timeout);
    __tsan_acquire(this);
    return acquired;
}
