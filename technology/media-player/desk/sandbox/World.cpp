#include "World.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <initializer_list>
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

// What this program needs to start, which then brings in the rest of the machine itself.
void BindLibraries(Arguments& aArguments)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/", error)) {
        const std::string path = entry.path().string();
        if (entry.is_symlink(error)) {
            Add(aArguments, {"--symlink", fs::read_symlink(path, error).string(), path});
        } else if (path == "/usr" || path.rfind("/lib", 0) == 0) {
            Add(aArguments, {"--dev-bind", path, path});
        }
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
    Add(aArguments, {"--dev-bind", "/", kPrivateMachine});
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

std::string FindOwnLibrary(const std::string& aName)
{
    // The same way from the program in the build tree and in an installation.
    const fs::path library = fs::path(OwnExecutable()).parent_path() / "../lib/mpl-test-support" / aName;
    return access(library.c_str(), R_OK) == 0 ? library.lexically_normal().string() : std::string();
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
    Arguments arguments = {"bwrap", "--die-with-parent", "--unshare-pid", "--unshare-ipc", "--chdir", "/"};
    if (getuid() != 0) {
        // What BringInMachine needs; root has them.
        Add(arguments, {"--cap-add", "CAP_SYS_ADMIN", "--cap-add", "CAP_SETPCAP"});
    }
    Add(arguments, {"--proc", "/proc", "--dir", "/opt", "--dir", "/var"});
    if (aPlaces.hasCgroup) {
        Add(arguments, {"--unshare-cgroup"});
    }
    BindLibraries(arguments);
    MakeRun(arguments);
    for (const auto& [library, place] : {std::pair(aPlaces.clockLibrary, kPrivateClock),
                                         std::pair(aPlaces.managerLibrary, kPrivateManagerLibrary)}) {
        if (!library.empty()) {
            Add(arguments, {"--ro-bind", library, place});
        }
    }
    Add(arguments, {"--dir", kStackVariableFolder});
    BindStack(arguments, aPlaces.stackFolder);
    return arguments;
}

} // namespace sandbox
