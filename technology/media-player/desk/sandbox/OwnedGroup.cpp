#include "OwnedGroup.h"

#include "ControlGroups.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

namespace sandbox
{

namespace
{

constexpr int kSweepLimitMs = 5000; // of which a busy machine needs some to end what was killed
const std::string kPrefix = "mpl-sandbox.";

// Invalid when somebody has it, or the group is another user's or gone.
UniqueFd Lock(const std::string& aFolder)
{
    UniqueFd lock(open(aFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat group = {};
    if (fstat(lock.Get(), &group) != 0 || group.st_uid != geteuid() ||
        flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) {
        lock.Close();
    }
    return lock;
}

void Sweep(const std::string& aFolder)
{
    const UniqueFd lock = Lock(aFolder);
    if (lock.IsValid() && !EndGroup(aFolder, kSweepLimitMs)) {
        const int obstacle = errno;
        Say(WithErrno("the control group " + aFolder +
                          ", left of a sandbox that was killed, can't be removed",
                      obstacle) +
            "; end the processes that its cgroup.procs names and run 'rmdir " + aFolder + "'");
    }
}

} // namespace

bool IsStill(const OwnedGroup& aGroup)
{
    struct stat locked = {};
    struct stat present = {};
    return fstat(aGroup.lock.Get(), &locked) == 0 && stat(aGroup.folder.c_str(), &present) == 0 &&
           locked.st_ino == present.st_ino;
}

OwnedGroup MakeOwnedGroup(const std::string& aParent)
{
    const std::string folder = aParent + "/" + kPrefix + std::to_string(getpid());
    for (int attempt = 0; attempt < 100; ++attempt) {
        // A group of that name may be another process id space's.
        const std::string name = attempt > 0 ? folder + "-" + std::to_string(attempt) : folder;
        if (mkdir(name.c_str(), 0755) != 0) {
            if (errno != EEXIST) {
                break;
            }
            continue;
        }
        // Otherwise a sweep has it and removes it; what has the name by then is another's.
        OwnedGroup group = {name, Lock(name)};
        if (IsStill(group)) {
            return group;
        }
    }
    return {};
}

void SweepLeftGroups(const std::string& aParent)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> groups(opendir(aParent.c_str()), closedir);
    while (const dirent* entry = groups ? readdir(groups.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name.substr(0, kPrefix.size()) == kPrefix) {
            Sweep(std::string(aParent).append("/").append(name));
        }
    }
}

} // namespace sandbox
