/// What the preloaded functions share: the functions whose place they take, and the way between the clocks.
#pragma once

#include "Clock.h"

#include <dlfcn.h>

#include <ctime>

namespace sandbox
{

/// The function whose place one of this library takes, of that name: libfaketime's or the C library's.
template <auto Own>
auto Next(const char* aName)
{
    // NOLINTNEXTLINE(bugprone-dynamic-static-initializers): two threads would both find the same.
    static const auto kNext = reinterpret_cast<decltype(Own)>(dlsym(RTLD_NEXT, aName));
    return kNext;
}

/// The sandbox's clock as the environment tells it; the machine's where it tells nothing.
const Clock& TheClock();

template <typename Time>
long long Nanoseconds(const Time& aTime)
{
    // Some wait "for ever" by the largest number there is.
    const long long seconds = aTime.tv_sec < 4 * kSecond ? aTime.tv_sec : 4 * kSecond;
    return seconds * kSecond + aTime.tv_nsec;
}

template <typename Time>
void SetNanoseconds(Time& aTime, long long aNanoseconds)
{
    aTime.tv_sec = static_cast<decltype(aTime.tv_sec)>(aNanoseconds / kSecond);
    aTime.tv_nsec = static_cast<decltype(aTime.tv_nsec)>(aNanoseconds % kSecond);
}

/// A length of the program's on the machine's clock, and back. Nothing but zero becomes zero.
timespec ToMachine(const timespec& aLength);
timespec FromMachine(const timespec& aLength);

/// The moment on one of the machine's clocks at which the program's same clock shows `aMoment`.
timespec ToMachine(clockid_t aClock, const timespec& aMoment);

/// A time limit that may be none, for a call.
class Limit
{
public:
    explicit Limit(const timespec* aLength) : m_IsThere(aLength != nullptr)
    {
        if (m_IsThere) {
            m_Time = ToMachine(*aLength);
        }
    }
    Limit(clockid_t aClock, const timespec* aMoment) : m_IsThere(aMoment != nullptr)
    {
        if (m_IsThere) {
            m_Time = ToMachine(aClock, *aMoment);
        }
    }

    const timespec* Get() const { return m_IsThere ? &m_Time : nullptr; }

private:
    bool m_IsThere;
    timespec m_Time = {};
};

} // namespace sandbox
