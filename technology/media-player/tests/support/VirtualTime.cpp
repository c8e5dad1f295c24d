#include "VirtualTime.h"

#include "Journal.h"

#include <QMutex>

#include <ctime>

namespace MPL::Doubles
{

namespace
{

QMutex s_Mutex;
qint64 s_Slept = 0;
std::function<void()> s_OnSleep;

qint64 Milliseconds(const timespec& aTime)
{
    return static_cast<qint64>(aTime.tv_sec) * 1000 + static_cast<qint64>(aTime.tv_nsec) / 1000000;
}

int Sleep(qint64 aMilliseconds)
{
    std::function<void()> action;
    {
        QMutexLocker lock(&s_Mutex);
        s_Slept += aMilliseconds;
        action = s_OnSleep;
    }
    Note(QStringLiteral("sleep %1 ms").arg(aMilliseconds));
    if (action) {
        action();
    }
    return 0;
}

} // namespace

qint64 VirtualTime::Slept()
{
    QMutexLocker lock(&s_Mutex);
    return s_Slept;
}

void VirtualTime::OnSleep(std::function<void()> aAction)
{
    QMutexLocker lock(&s_Mutex);
    s_OnSleep = std::move(aAction);
}

void VirtualTime::Reset()
{
    QMutexLocker lock(&s_Mutex);
    s_Slept = 0;
    s_OnSleep = nullptr;
}

} // namespace MPL::Doubles

// These take the place of the C library's functions, for Qt's libraries too.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" int nanosleep(const timespec* aRequested, timespec* /*remaining*/)
{
    return MPL::Doubles::Sleep(MPL::Doubles::Milliseconds(*aRequested));
}

extern "C" int clock_nanosleep(clockid_t aClock, int aFlags, const timespec* aRequested,
                               timespec* /*remaining*/)
{
    qint64 milliseconds = MPL::Doubles::Milliseconds(*aRequested);
    if ((aFlags & TIMER_ABSTIME) != 0) {
        timespec now{};
        clock_gettime(aClock, &now);
        milliseconds -= MPL::Doubles::Milliseconds(now);
    }
    return MPL::Doubles::Sleep(qMax<qint64>(0, milliseconds));
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
