// Waits with a time limit that libfaketime does not know: those of C++'s condition variables, mutexes and
// futures, of Qt's semaphores and mutexes, and of the newer system calls.
#include "Next.h"

#include <linux/futex.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/epoll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstring>

using namespace sandbox;

namespace
{

// The time limit of a futex call on the machine's clock; the operation tells what it is measured from.
Limit FutexLimit(int aOperation, const timespec* aLimit)
{
    switch (aOperation & FUTEX_CMD_MASK) {
    case FUTEX_WAIT:
        return Limit(aLimit);
    case FUTEX_WAIT_BITSET:
        return {(aOperation & FUTEX_CLOCK_REALTIME) != 0 ? CLOCK_REALTIME : CLOCK_MONOTONIC, aLimit};
    case FUTEX_LOCK_PI:
        return {CLOCK_REALTIME, aLimit};
    default:
        return Limit(nullptr);
    }
}

bool HasFutexLimit(int aOperation)
{
    const int command = aOperation & FUTEX_CMD_MASK;
    return command == FUTEX_WAIT || command == FUTEX_WAIT_BITSET || command == FUTEX_LOCK_PI;
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" {

int pthread_cond_clockwait(pthread_cond_t* aCondition, pthread_mutex_t* aMutex, clockid_t aClock,
                           const timespec* aMoment)
{
    return Next<&pthread_cond_clockwait>("pthread_cond_clockwait")(aCondition, aMutex, aClock,
                                                                   Limit(aClock, aMoment).Get());
}

int pthread_mutex_clocklock(pthread_mutex_t* aMutex, clockid_t aClock, const timespec* aMoment) noexcept
{
    return Next<&pthread_mutex_clocklock>("pthread_mutex_clocklock")(aMutex, aClock,
                                                                     Limit(aClock, aMoment).Get());
}

int pthread_mutex_timedlock(pthread_mutex_t* aMutex, const timespec* aMoment) noexcept
{
    return pthread_mutex_clocklock(aMutex, CLOCK_REALTIME, aMoment);
}

int pthread_rwlock_clockrdlock(pthread_rwlock_t* aLock, clockid_t aClock, const timespec* aMoment) noexcept
{
    return Next<&pthread_rwlock_clockrdlock>("pthread_rwlock_clockrdlock")(aLock, aClock,
                                                                           Limit(aClock, aMoment).Get());
}

int pthread_rwlock_clockwrlock(pthread_rwlock_t* aLock, clockid_t aClock, const timespec* aMoment) noexcept
{
    return Next<&pthread_rwlock_clockwrlock>("pthread_rwlock_clockwrlock")(aLock, aClock,
                                                                           Limit(aClock, aMoment).Get());
}

int pthread_rwlock_timedrdlock(pthread_rwlock_t* aLock, const timespec* aMoment) noexcept
{
    return pthread_rwlock_clockrdlock(aLock, CLOCK_REALTIME, aMoment);
}

int pthread_rwlock_timedwrlock(pthread_rwlock_t* aLock, const timespec* aMoment) noexcept
{
    return pthread_rwlock_clockwrlock(aLock, CLOCK_REALTIME, aMoment);
}

int sem_clockwait(sem_t* aSemaphore, clockid_t aClock, const timespec* aMoment)
{
    return Next<&sem_clockwait>("sem_clockwait")(aSemaphore, aClock, Limit(aClock, aMoment).Get());
}

int sem_timedwait(sem_t* aSemaphore, const timespec* aMoment)
{
    return sem_clockwait(aSemaphore, CLOCK_REALTIME, aMoment);
}

int sigtimedwait(const sigset_t* aSet, siginfo_t* aInfo, const timespec* aLength)
{
    return Next<&sigtimedwait>("sigtimedwait")(aSet, aInfo, Limit(aLength).Get());
}

int epoll_pwait2(int aEpoll, epoll_event* aEvents, int aCount, const timespec* aLength, const sigset_t* aMask)
{
    return Next<&epoll_pwait2>("epoll_pwait2")(aEpoll, aEvents, aCount, Limit(aLength).Get(), aMask);
}

// Programs that were compiled with checked buffers call these.
int CheckedPoll(pollfd* aFds, nfds_t aCount, int aMilliseconds, size_t aSize) __asm__("__poll_chk");
int CheckedPoll(pollfd* aFds, nfds_t aCount, int aMilliseconds, size_t /*aSize*/)
{
    return poll(aFds, aCount, aMilliseconds);
}

int CheckedPpoll(pollfd* aFds, nfds_t aCount, const timespec* aLength, const sigset_t* aMask,
                 size_t aSize) __asm__("__ppoll_chk");
int CheckedPpoll(pollfd* aFds, nfds_t aCount, const timespec* aLength, const sigset_t* aMask,
                 size_t /*aSize*/)
{
    return ppoll(aFds, aCount, aLength, aMask);
}

// Qt and the C++ library wait on futexes by this. Every system call takes six words at most.
long syscall(long aNumber, ...) noexcept
{
    long words[6];
    va_list list;
    va_start(list, aNumber);
    for (long& word : words) {
        word = va_arg(list, long);
    }
    va_end(list);
    const auto operation = static_cast<int>(words[1]);
    if (aNumber != SYS_futex || !HasFutexLimit(operation)) {
        return Next<&syscall>("syscall")(aNumber, words[0], words[1], words[2], words[3], words[4], words[5]);
    }
    const timespec* given = nullptr;
    std::memcpy(&given, &words[3], sizeof words[3]);
    const Limit limit = FutexLimit(operation, given);
    return Next<&syscall>("syscall")(aNumber, words[0], words[1], words[2], limit.Get(), words[4], words[5]);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
