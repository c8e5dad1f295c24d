// Timers. libfaketime gets some of them wrong (moments of timer descriptors, alarms below its own second) and
// misses the timers of programs made for the C library's current version.
#include "Next.h"

#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdio>

using namespace sandbox;

namespace
{

itimerspec TimerFromMachine(const itimerspec& aTimer)
{
    return {FromMachine(aTimer.it_interval), FromMachine(aTimer.it_value)};
}

// `aIsMoment`: the timer's value is a moment on that clock, not the time left. Zero disarms either way.
itimerspec TimerToMachine(clockid_t aClock, const itimerspec& aTimer, bool aIsMoment)
{
    return {ToMachine(aTimer.it_interval), aIsMoment && Nanoseconds(aTimer.it_value) != 0
                                               ? ToMachine(aClock, aTimer.it_value)
                                               : ToMachine(aTimer.it_value)};
}

void TellOld(int aResult, const itimerspec& aOld, itimerspec* aPlace)
{
    if (aResult == 0 && aPlace != nullptr) {
        *aPlace = TimerFromMachine(aOld);
    }
}

// The clock that a timer descriptor was made with.
clockid_t ClockOf(int aTimer)
{
    char path[64];
    snprintf(path, sizeof path, "/proc/self/fdinfo/%d", aTimer);
    clockid_t clock = CLOCK_MONOTONIC;
    if (FILE* info = fopen(path, "re")) {
        char line[128];
        while (fgets(line, sizeof line, info) != nullptr && sscanf(line, "clockid: %d", &clock) != 1) {
        }
        fclose(info);
    }
    return clock;
}

// Timer of the real-time clock, by which alarms and interval timers go.
itimerspec Spec(const itimerval& aTimer)
{
    return {{aTimer.it_interval.tv_sec, 1000 * aTimer.it_interval.tv_usec},
            {aTimer.it_value.tv_sec, 1000 * aTimer.it_value.tv_usec}};
}

// Up to the next microsecond, so that what is armed stays so.
itimerval Val(const itimerspec& aTimer)
{
    return {{aTimer.it_interval.tv_sec, (aTimer.it_interval.tv_nsec + 999) / 1000},
            {aTimer.it_value.tv_sec, (aTimer.it_value.tv_nsec + 999) / 1000}};
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" {

int timerfd_settime(int aTimer, int aFlags, const itimerspec* aNew, itimerspec* aOld) noexcept
{
    const bool isMoment = (aFlags & TFD_TIMER_ABSTIME) != 0;
    const itimerspec timer = TimerToMachine(isMoment ? ClockOf(aTimer) : CLOCK_MONOTONIC, *aNew, isMoment);
    itimerspec old = {};
    const auto result = static_cast<int>(syscall(SYS_timerfd_settime, aTimer, aFlags, &timer, &old));
    TellOld(result, old, aOld);
    return result;
}

int timerfd_gettime(int aTimer, itimerspec* aTime) noexcept
{
    itimerspec time = {};
    const auto result = static_cast<int>(syscall(SYS_timerfd_gettime, aTimer, &time));
    TellOld(result, time, aTime);
    return result;
}

// libfaketime has this one, but bound to another version of the C library than programs of today ask for.
int timer_settime(timer_t aTimer, int aFlags, const itimerspec* aNew, itimerspec* aOld) noexcept
{
    return Next<&timer_settime>("timer_settime")(aTimer, aFlags, aNew, aOld);
}

int timer_gettime(timer_t aTimer, itimerspec* aTime) noexcept
{
    return Next<&timer_gettime>("timer_gettime")(aTimer, aTime);
}

int setitimer(int aWhich, const itimerval* aNew, itimerval* aOld) noexcept
{
    if (aWhich != ITIMER_REAL || aNew == nullptr) {
        return Next<&setitimer>("setitimer")(aWhich, aNew, aOld);
    }
    const itimerval timer = Val(TimerToMachine(CLOCK_REALTIME, Spec(*aNew), false));
    itimerval old = {};
    const int result = Next<&setitimer>("setitimer")(aWhich, &timer, &old);
    if (result == 0 && aOld != nullptr) {
        *aOld = Val(TimerFromMachine(Spec(old)));
    }
    return result;
}

int getitimer(int aWhich, itimerval* aTime) noexcept
{
    const int result = Next<&getitimer>("getitimer")(aWhich, aTime);
    if (result == 0 && aWhich == ITIMER_REAL) {
        *aTime = Val(TimerFromMachine(Spec(*aTime)));
    }
    return result;
}

unsigned alarm(unsigned aSeconds) noexcept
{
    const itimerval timer = {{}, {static_cast<time_t>(aSeconds), 0}};
    itimerval old = {};
    setitimer(ITIMER_REAL, &timer, &old);
    return static_cast<unsigned>(old.it_value.tv_sec) + (old.it_value.tv_usec > 0 ? 1 : 0);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
