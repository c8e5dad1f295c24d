#include "Enclosure.h"

#include "Posix.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <string>

namespace sandbox
{

namespace
{

// A process id space with the /proc that belongs to it. Who isn't root may make these only together with a
// user space.
constexpr unsigned kSpaces = CLONE_NEWPID | CLONE_NEWNS;
constexpr unsigned kOrdinaryUsersSpaces = kSpaces | CLONE_NEWUSER;

struct User {
    uid_t user = getuid();
    gid_t group = getgid();
};

// The same user as before, in a new user space. Where that can't be written bubblewrap will say so.
void Remain(const User& aUser)
{
    const auto toItself = [](auto aId) { return std::to_string(aId) + " " + std::to_string(aId) + " 1"; };
    WriteTextFile("/proc/self/setgroups", "deny");
    WriteTextFile("/proc/self/uid_map", toItself(aUser.user));
    WriteTextFile("/proc/self/gid_map", toItself(aUser.group));
}

void MountOwnProcesses()
{
    mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr);
}

} // namespace

int RunEnclosed(const PrivateCgroup& aCgroup, const std::function<int()>& aRun)
{
    Pipe alive = MakePipe();
    const User user;
    const pid_t process = aCgroup.Fork(user.user == 0 ? kSpaces : kOrdinaryUsersSpaces);
    if (process == 0) {
        alive.read.Close();
        DieWithParent(alive.write.Get());
        if (getpid() == 1) {
            if (user.user != 0) {
                Remain(user);
            }
            MountOwnProcesses();
        }
        _exit(aRun());
    }
    return WaitForEnd(process);
}

} // namespace sandbox
