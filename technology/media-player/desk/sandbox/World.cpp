#include "World.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <initializer_list>
#include <set>
#include <system_error>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

using Arguments = std::vector<std::string>;

void Add(Arguments& aArguments, std::initializer_list<std::string> aMore)
{
    aArguments.insert(aArguments.end(), aMore);
}

// Binds what lies in one of the machine's folders to the same place inside. What is not bound can't be
// changed from inside, and what the sandbox adds there is not seen outside.
void BindEntries(Arguments& aArguments, const std::string& aFolder, const std::set<std::string>& aExcept)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(aFolder, error)) {
        const std::string path = entry.path().string();
        if (aExcept.count(entry.path().filename().string()) > 0) {
            continue;
        }
        // Listing a folder already tells its links; looking closer could wake an automounter.
        if (entry.is_symlink(error)) {
            Add(aArguments, {"--symlink", fs::read_symlink(path, error).string(), path});
        } else {
            Add(aArguments, {"--dev-bind-try", path, path});
        }
    }
}

// All but /run, and a shared memory of the sandbox's own.
void BindMachine(Arguments& aArguments)
{
    BindEntries(aArguments, "/", {"proc", "run", "opt", "var"});
    Add(aArguments, {"--proc", "/proc", "--dir", "/opt", "--dir", "/var"});
    BindEntries(aArguments, "/opt", {"talvex"});
    BindEntries(aArguments, "/var", {"talvex"});
    std::error_code error;
    if (fs::is_directory(fs::symlink_status("/dev/shm", error))) {
        Add(aArguments, {"--perms", "1777", "--tmpfs", "/dev/shm"});
    }
}

void MakeRun(Arguments& aArguments)
{
    // Names of other machines are often looked up through this one folder.
    Add(aArguments, {"--tmpfs", "/run", "--ro-bind-try", "/run/systemd/resolve", "/run/systemd/resolve"});
    // Programs that want to know whether systemd runs the machine look for this one.
    Add(aArguments, {"--dir", "/run/systemd/system", "--dir", "/run/lock"});
    Add(aArguments, {"--perms", "0700", "--dir", RuntimeFolder(), "--dir", kPrivateTempFolder});
    Add(aArguments, {"--dir", kPrivateUnitFolder, "--ro-bind", OwnExecutable(), kPrivateProgram});
}

void BindStack(Arguments& aArguments, const std::string& aStackFolder)
{
    Add(aArguments, {"--dir", kStackFolder, "--dir", kStackFolder + "/etc"});
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(aStackFolder, error)) {
        const std::string name = entry.path().filename().string();
        const fs::path place =
            name == "etc" ? fs::path(kPrivateStackEtc) : kStackFolder / entry.path().filename();
        Add(aArguments, {"--ro-bind", entry.path().string(), place.string()});
    }
}

} // namespace

std::string OwnExecutable()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).string();
}

std::string RuntimeFolder()
{
    return "/run/user/" + std::to_string(getuid());
}

std::string BusSocket()
{
    return RuntimeFolder() + "/bus";
}

std::string BusAddress()
{
    return "unix:path=" + BusSocket();
}

std::vector<std::string> BubblewrapArguments(const Places& aPlaces)
{
    Arguments arguments = {"bwrap", "--die-with-parent", "--unshare-pid", "--unshare-ipc"};
    BindMachine(arguments);
    if (!aPlaces.cgroupFolder.empty()) {
        Add(arguments, {"--unshare-cgroup", "--bind", aPlaces.cgroupFolder, "/sys/fs/cgroup"});
    }
    MakeRun(arguments);
    if (!aPlaces.clockLibrary.empty()) {
        Add(arguments, {"--ro-bind", aPlaces.clockLibrary, kPrivateClock});
    }
    Add(arguments, {"--dir", kStackVariableFolder});
    BindStack(arguments, aPlaces.stackFolder);
    return arguments;
}

} // namespace sandbox
