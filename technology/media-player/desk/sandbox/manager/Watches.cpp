// Leaves the lifecycle manager without the watches that it has no use for in a sandbox: for another time zone
// and for what the machine mounts. The kernel takes some ten milliseconds to close each queue with a watch in
// it, at the start of the manager and again at its end, for which the sandbox has to wait. It keeps those of
// the control groups, by which it knows that a service has ended.
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace
{

constexpr int kFirstOfNone = 1 << 30; // the kernel counts from 1
constexpr const char kGroups[] = "/sys/fs/cgroup/";

bool IsInGroups(const char* aPath)
{
    // systemd names most of what it watches by a descriptor.
    char target[sizeof kGroups];
    const ssize_t length = readlink(aPath, target, sizeof target);
    const char* path = length == sizeof target ? target : aPath;
    return std::strncmp(path, kGroups, sizeof kGroups - 1) == 0;
}

// Not into what the manager starts: this library is the first of those to preload.
__attribute__((constructor)) void LeaveEnvironment()
{
    const char* libraries = std::getenv("LD_PRELOAD");
    const char* others = libraries != nullptr ? std::strchr(libraries, ':') : nullptr;
    if (others == nullptr) {
        unsetenv("LD_PRELOAD");
    } else {
        setenv("LD_PRELOAD", others + 1, 1);
    }
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" {

int inotify_add_watch(int aQueue, const char* aPath, uint32_t aMask) noexcept
{
    static int s_Count = 0;
    if (IsInGroups(aPath)) {
        return static_cast<int>(syscall(SYS_inotify_add_watch, aQueue, aPath, aMask));
    }
    return kFirstOfNone + s_Count++;
}

int inotify_rm_watch(int aQueue, int aWatch) noexcept
{
    return aWatch >= kFirstOfNone ? 0 : static_cast<int>(syscall(SYS_inotify_rm_watch, aQueue, aWatch));
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
