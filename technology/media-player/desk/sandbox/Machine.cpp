#include "Machine.h"

#include "Posix.h"
#include "World.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

bool Failed(const std::string& aWhat, std::string& aReason)
{
    aReason = WithErrno(aWhat, errno);
    return false;
}

bool Bind(const std::string& aSource, const std::string& aTarget, std::string& aReason)
{
    // What vanished since it was listed needs no place.
    return mount(aSource.c_str(), aTarget.c_str(), nullptr, MS_BIND | MS_REC | MS_SILENT, nullptr) == 0 ||
           errno == ENOENT || Failed("the machine's " + aTarget + " can't be bound", aReason);
}

void MakeMountPoint(const fs::directory_entry& aEntry, const std::string& aPlace)
{
    std::error_code error;
    if (aEntry.is_directory(error)) {
        mkdir(aPlace.c_str(), 0755);
    } else {
        const UniqueFd file(open(aPlace.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    }
}

bool BindEntries(const std::string& aFolder, std::string& aReason)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(kPrivateMachine + aFolder, error)) {
        const std::string place = aFolder + entry.path().filename().string();
        // Listing a folder already tells its links; looking closer could wake an automounter.
        if (fs::exists(fs::symlink_status(place, error))) {
            continue; // the sandbox has its own
        }
        if (entry.is_symlink(error)) {
            fs::create_symlink(fs::read_symlink(entry.path(), error), place, error);
            continue;
        }
        MakeMountPoint(entry, place);
        if (!Bind(entry.path().string(), place, aReason)) {
            return false;
        }
    }
    return true;
}

bool MakeSharedMemory(std::string& aReason)
{
    constexpr const char* kFolder = "/dev/shm";
    std::error_code error;
    return !fs::is_directory(fs::symlink_status(kFolder, error)) ||
           mount("tmpfs", kFolder, "tmpfs", MS_NOSUID | MS_NODEV, "mode=1777") == 0 ||
           Failed(std::string("no memory can be mounted at ") + kFolder, aReason);
}

bool GiveUpCapabilities(std::string& aReason)
{
    prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0);
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return (prctl(PR_CAPBSET_DROP, CAP_SYS_ADMIN, 0, 0, 0) == 0 &&
            prctl(PR_CAPBSET_DROP, CAP_SETPCAP, 0, 0, 0) == 0 && syscall(SYS_capset, &header, none) == 0) ||
           Failed("the capabilities can't be given up", aReason);
}

} // namespace

bool BringInMachine(const std::string& aCgroupFolder, std::string& aReason)
{
    for (const char* folder : {"/", "/opt/", "/var/"}) {
        if (!BindEntries(folder, aReason)) {
            return false;
        }
    }
    return MakeSharedMemory(aReason) &&
           (aCgroupFolder.empty() || Bind(kPrivateMachine + aCgroupFolder, "/sys/fs/cgroup", aReason)) &&
           (umount2(kPrivateMachine.c_str(), MNT_DETACH) == 0 ||
            Failed(kPrivateMachine + " can't be unmounted", aReason)) &&
           rmdir(kPrivateMachine.c_str()) == 0 && (getuid() == 0 || GiveUpCapabilities(aReason));
}

} // namespace sandbox
