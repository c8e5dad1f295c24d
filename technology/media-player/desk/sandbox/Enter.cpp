#include "Enter.h"

#include "Posix.h"
#include "Running.h"
#include "World.h"
#include "record/Visitor.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

bool IsMeant(const RunningSandbox& aSandbox, const std::string& aWhich)
{
    return std::to_string(aSandbox.pid) == aWhich ||
           fs::path(aSandbox.command.empty() ? "" : aSandbox.command.front()).filename() == aWhich;
}

// A sandbox of another user counts only where this user has none of that name.
std::vector<RunningSandbox> FindMeant(const std::string& aWhich)
{
    std::vector<RunningSandbox> own;
    std::vector<RunningSandbox> others;
    for (const RunningSandbox& sandbox : FindRunning()) {
        if (IsMeant(sandbox, aWhich)) {
            (sandbox.user == getuid() ? own : others).push_back(sandbox);
        }
    }
    return own.empty() ? others : own;
}

// Empty when there is exactly one, and this user may enter it.
std::string ProblemWith(const std::vector<RunningSandbox>& aMeant, const std::string& aWhich)
{
    if (aMeant.empty()) {
        return "no sandbox '" + aWhich + "' runs; mpl-sandbox --list shows those that do";
    }
    if (aMeant.size() > 1) {
        std::string ids;
        for (const RunningSandbox& sandbox : aMeant) {
            ids += " " + std::to_string(sandbox.pid);
        }
        return "several sandboxes run '" + aWhich + "'; name one by its process id:" + ids;
    }
    if (aMeant.front().user != getuid() && getuid() != 0) {
        return "the sandbox " + std::to_string(aMeant.front().pid) + " belongs to another user (user id " +
               std::to_string(aMeant.front().user) + "); enter it as that user or as root";
    }
    return {};
}

bool IsSameFile(const std::string& aLeft, const std::string& aRight)
{
    struct stat left = {};
    struct stat right = {};
    return stat(aLeft.c_str(), &left) == 0 && stat(aRight.c_str(), &right) == 0 &&
           left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

// The user's world first: with it come the rights to join the others.
bool JoinWorlds(pid_t aProcess)
{
    const std::string folder = "/proc/" + std::to_string(aProcess);
    const UniqueFd root(open((folder + "/root").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::array<UniqueFd, 5> worlds;
    const char* names[] = {"user", "cgroup", "ipc", "pid", "mnt"};
    for (size_t i = 0; i < worlds.size(); ++i) {
        const std::string world = folder + "/ns/" + names[i];
        if (!IsSameFile(world, std::string("/proc/self/ns/") + names[i])) {
            worlds[i] = UniqueFd(open(world.c_str(), O_RDONLY | O_CLOEXEC));
            if (!worlds[i].IsValid()) {
                return false;
            }
        }
    }
    for (const UniqueFd& world : worlds) {
        if (world.IsValid() && setns(world.Get(), 0) != 0) {
            return false;
        }
    }
    return root.IsValid() && fchdir(root.Get()) == 0 && chroot(".") == 0;
}

void TakeEnvironment()
{
    std::istringstream lines(ReadTextFile(kPrivateEnvironment));
    for (std::string line; std::getline(lines, line);) {
        const size_t end = line.find('=');
        if (end != std::string::npos) {
            setenv(line.substr(0, end).c_str(), line.c_str() + end + 1, 1);
        }
    }
}

void GoTo(const std::string& aFolder)
{
    if (chdir(aFolder.c_str()) != 0 && chdir("/") != 0) {
        return;
    }
}

std::vector<std::string> Shell()
{
    const char* shell = std::getenv("SHELL");
    return {shell != nullptr && access(shell, X_OK) == 0 ? shell : "/bin/sh"};
}

int RunIn(const std::vector<std::string>& aCommand)
{
    // Ctrl-C is for the command.
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGQUIT, SIG_IGN);
    const Spawned command = Spawn(aCommand, [] {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGQUIT, SIG_DFL);
    });
    if (command.pid >= 0) {
        return WaitForEnd(command.pid);
    }
    Say(WithErrno("the command " + aCommand.front() + " can't be run in the sandbox", command.error));
    return command.error == ENOENT ? kExitNotFound : kExitCannotRun;
}

} // namespace

int EnterSandbox(const std::string& aWhich, const std::vector<std::string>& aCommand)
{
    const std::vector<RunningSandbox> meant = FindMeant(aWhich);
    if (const std::string problem = ProblemWith(meant, aWhich); !problem.empty()) {
        Say(problem);
        return kExitNoSandbox;
    }
    std::error_code error;
    const std::string folder = fs::current_path(error).string();
    if (!JoinWorlds(meant.front().insidePid)) {
        Say(WithErrno("the sandbox " + std::to_string(meant.front().pid) + " can't be entered", errno) +
            "; it may just have ended");
        return kExitNoSandbox;
    }
    AnnounceVisitor();
    TakeEnvironment();
    GoTo(folder);
    // At once: a sanitizer's last check clones this process and waits for the clone, which is born in another
    // world from here on.
    _exit(RunIn(aCommand.empty() ? Shell() : aCommand));
}

} // namespace sandbox
