#include "Next.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

namespace sandbox
{

namespace
{

Clock ReadClock()
{
    const char* speed = getenv(kSpeedVariable);
    const char* start = getenv(kClockStartVariable);
    if (speed == nullptr || start == nullptr) {
        return {};
    }
    return {strtoll(start, nullptr, 10), strtod(speed, nullptr)};
}

// While there is one thread only.
__attribute__((constructor)) void ReadClockAtLoad()
{
    TheClock();
}

timespec Scaled(const timespec& aLength, double aFactor)
{
    const auto length = static_cast<long long>(static_cast<double>(Nanoseconds(aLength)) * aFactor);
    timespec scaled = {};
    SetNanoseconds(scaled, length == 0 && Nanoseconds(aLength) != 0 ? 1 : length);
    return scaled;
}

} // namespace

const Clock& TheClock()
{
    static const Clock kClock = ReadClock();
    return kClock;
}

timespec ToMachine(const timespec& aLength)
{
    return Scaled(aLength, 1 / TheClock().speed);
}

timespec FromMachine(const timespec& aLength)
{
    return Scaled(aLength, TheClock().speed);
}

timespec ToMachine(clockid_t aClock, const timespec& aMoment)
{
    timespec here = {};
    timespec there = {};
    clock_gettime(aClock, &here);
    // libfaketime does not see this one.
    syscall(SYS_clock_gettime, aClock, &there);
    const long long left = Nanoseconds(aMoment) - Nanoseconds(here);
    const auto leftThere = static_cast<long long>(static_cast<double>(left) / TheClock().speed);
    timespec moment = {};
    SetNanoseconds(moment, Nanoseconds(there) + (left > 0 ? leftThere : 0));
    return moment;
}

} // namespace sandbox
