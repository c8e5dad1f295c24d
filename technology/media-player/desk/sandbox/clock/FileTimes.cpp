// Times of files: what the kernel stamps by the machine's clock, programs see by the sandbox's, so that a
// file written now is as old as the program's own "now". libfaketime would do this for a few of these calls
// only, and would age the files that were there before the sandbox.
#include "Next.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <utime.h>

using namespace sandbox;

namespace
{

// Leaves what is the same on both clocks as it is, also times that no number of nanoseconds can hold.
template <typename Time>
void Change(Time& aTime, long long aNanoseconds)
{
    if (aNanoseconds != Nanoseconds(aTime)) {
        SetNanoseconds(aTime, aNanoseconds);
    }
}

template <typename Time>
void Show(Time& aTime)
{
    Change(aTime, TheClock().FromMachine(Nanoseconds(aTime)));
}

template <typename Stat>
int ShowTimes(int aResult, Stat* aStat)
{
    if (aResult == 0) {
        Show(aStat->st_atim);
        Show(aStat->st_mtim);
        Show(aStat->st_ctim);
    }
    return aResult;
}

timespec Stamp(const timespec& aTime)
{
    timespec stamp = aTime;
    if (aTime.tv_nsec != UTIME_NOW && aTime.tv_nsec != UTIME_OMIT) {
        Change(stamp, TheClock().ToMachine(Nanoseconds(aTime)));
    }
    return stamp;
}

/// Two times to stamp a file with; none means now.
class Stamps
{
public:
    explicit Stamps(const timespec* aTimes) : m_AreThere(aTimes != nullptr)
    {
        if (m_AreThere) {
            m_Times[0] = Stamp(aTimes[0]);
            m_Times[1] = Stamp(aTimes[1]);
        }
    }
    const timespec* Get() const { return m_AreThere ? m_Times : nullptr; }

private:
    bool m_AreThere;
    timespec m_Times[2] = {};
};

// The older calls have microseconds or seconds; they end in the newest one.
int SetTimes(int aFolder, const char* aPath, const timeval* aTimes, int aFlags)
{
    if (aTimes == nullptr) {
        return utimensat(aFolder, aPath, nullptr, aFlags);
    }
    const timespec times[2] = {{aTimes[0].tv_sec, 1000 * aTimes[0].tv_usec},
                               {aTimes[1].tv_sec, 1000 * aTimes[1].tv_usec}};
    return utimensat(aFolder, aPath, times, aFlags);
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" {

int stat(const char* aPath, struct stat* aStat) noexcept
{
    return ShowTimes(Next<&stat>("stat")(aPath, aStat), aStat);
}

int stat64(const char* aPath, struct stat64* aStat) noexcept
{
    return ShowTimes(Next<&stat64>("stat64")(aPath, aStat), aStat);
}

int lstat(const char* aPath, struct stat* aStat) noexcept
{
    return ShowTimes(Next<&lstat>("lstat")(aPath, aStat), aStat);
}

int lstat64(const char* aPath, struct stat64* aStat) noexcept
{
    return ShowTimes(Next<&lstat64>("lstat64")(aPath, aStat), aStat);
}

int fstat(int aFile, struct stat* aStat) noexcept
{
    return ShowTimes(Next<&fstat>("fstat")(aFile, aStat), aStat);
}

int fstat64(int aFile, struct stat64* aStat) noexcept
{
    return ShowTimes(Next<&fstat64>("fstat64")(aFile, aStat), aStat);
}

int fstatat(int aFolder, const char* aPath, struct stat* aStat, int aFlags) noexcept
{
    return ShowTimes(Next<&fstatat>("fstatat")(aFolder, aPath, aStat, aFlags), aStat);
}

int fstatat64(int aFolder, const char* aPath, struct stat64* aStat, int aFlags) noexcept
{
    return ShowTimes(Next<&fstatat64>("fstatat64")(aFolder, aPath, aStat, aFlags), aStat);
}

int statx(int aFolder, const char* aPath, int aFlags, unsigned aMask, struct statx* aStat) noexcept
{
    const int result = Next<&statx>("statx")(aFolder, aPath, aFlags, aMask, aStat);
    if (result == 0) {
        Show(aStat->stx_atime);
        Show(aStat->stx_btime);
        Show(aStat->stx_ctime);
        Show(aStat->stx_mtime);
    }
    return result;
}

int utimensat(int aFolder, const char* aPath, const timespec* aTimes, int aFlags) noexcept
{
    return Next<&utimensat>("utimensat")(aFolder, aPath, Stamps(aTimes).Get(), aFlags);
}

int futimens(int aFile, const timespec* aTimes) noexcept
{
    return Next<&futimens>("futimens")(aFile, Stamps(aTimes).Get());
}

int utimes(const char* aPath, const timeval* aTimes) noexcept
{
    return SetTimes(AT_FDCWD, aPath, aTimes, 0);
}

int lutimes(const char* aPath, const timeval* aTimes) noexcept
{
    return SetTimes(AT_FDCWD, aPath, aTimes, AT_SYMLINK_NOFOLLOW);
}

int utime(const char* aPath, const utimbuf* aTimes) noexcept
{
    if (aTimes == nullptr) {
        return SetTimes(AT_FDCWD, aPath, nullptr, 0);
    }
    const timeval times[2] = {{aTimes->actime, 0}, {aTimes->modtime, 0}};
    return SetTimes(AT_FDCWD, aPath, times, 0);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
