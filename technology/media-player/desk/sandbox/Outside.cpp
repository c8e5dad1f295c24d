#include "Outside.h"

#include "Inside.h"
#include "Posix.h"
#include "PrivateCgroup.h"
#include "World.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

// Empty when the folder has a stack to run.
std::string ProblemWithStack(const std::string& aFolder)
{
    if (aFolder.empty()) {
        return "no stack was found beside this program: name one with --stack DIR or MPL_STACK";
    }
    std::error_code error;
    if (!fs::is_directory(aFolder, error)) {
        return "the stack folder " + aFolder +
               " does not exist: build the simulated stack, or name another with "
               "--stack DIR";
    }
    if (access((aFolder + "/bin/media_manager").c_str(), X_OK) != 0) {
        return "the stack folder " + aFolder +
               " has no programs (bin/media_manager is missing or can't be run): "
               "build or install the stack there, or name another with --stack DIR";
    }
    return {};
}

std::string SettingOf(const std::string& aPath)
{
    const std::string text = ReadTextFile(aPath);
    return text.substr(0, text.find('\n'));
}

// Why bubblewrap could not make the sandbox, and what helps on this machine.
std::string ExplainRefusal(const std::string& aBubblewrapMessage)
{
    std::string text = "bubblewrap can't make a sandbox here";
    text += aBubblewrapMessage.empty() ? "." : " (" + aBubblewrapMessage + ").";
    if (SettingOf("/proc/sys/user/max_user_namespaces") == "0") {
        return text + " User namespaces are off: run 'sysctl user.max_user_namespaces=10000' as root";
    }
    if (SettingOf("/proc/sys/kernel/unprivileged_userns_clone") == "0") {
        return text +
               " Ordinary users may make no namespaces: run 'sysctl kernel.unprivileged_userns_clone=1' "
               "as root";
    }
    if (SettingOf("/proc/sys/kernel/apparmor_restrict_unprivileged_userns") == "1") {
        return text + " AppArmor restricts user namespaces: run "
                      "'sysctl kernel.apparmor_restrict_unprivileged_userns=0' as root";
    }
    return text +
           " It needs user namespaces, or root with CAP_SYS_ADMIN: in a container, start it with "
           "--privileged, or with --security-opt seccomp=unconfined --security-opt systempaths=unconfined";
}

std::string SystemRecordFile(const std::string& aFile)
{
    const fs::path file(aFile);
    return (file.parent_path() / (file.stem().string() + ".system" + file.extension().string())).string();
}

// The records lie outside, so they are opened here and handed in.
bool OpenRecord(const std::string& aFile, UniqueFd& aFd)
{
    aFd = UniqueFd(open(aFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644));
    if (!aFd.IsValid()) {
        Say(WithErrno("the bus traffic can't be written to " + aFile, errno));
    }
    return aFd.IsValid();
}

// bubblewrap ends as soon as it knows the status. Its last child is the sandbox's process 1, which is handed
// to us; the kernel lets it end only after everything else in there. It is in our process group.
void WaitForOrphans()
{
    while (waitpid(0, nullptr, 0) > 0 || errno == EINTR) {
    }
}

int RunBubblewrap(const Options& aOptions, const std::string& aCgroupFolder, InsideSettings& aSettings)
{
    Pipe ready = MakePipe();
    Pipe messages = MakePipe();
    UniqueFd userStderr(dup(STDERR_FILENO));
    aSettings.stderrFd = userStderr.Get();
    aSettings.readyFd = ready.write.Get();

    std::vector<std::string> command = BubblewrapArguments(aOptions.stackFolder, aCgroupFolder);
    command.insert(command.end(), {"--", kPrivateProgram});
    const std::vector<std::string> inside = ToArguments(aSettings);
    command.insert(command.end(), inside.begin(), inside.end());

    const pid_t self = getpid();
    const Spawned bubblewrap = Spawn(command, [&] {
        DieWithParent(self);
        fcntl(ready.write.Get(), F_SETFD, 0);
        dup2(messages.write.Get(), STDERR_FILENO);
    });
    ready.write.Close();
    messages.write.Close();
    if (bubblewrap.pid < 0) {
        Say(bubblewrap.error == ENOENT ? "bubblewrap is missing: install the package bubblewrap"
                                       : WithErrno("bubblewrap (bwrap) can't be run", bubblewrap.error));
        return kExitNoSandbox;
    }
    const bool stands = !ReadAll(ready.read.Get()).empty();
    const int status = WaitForEnd(bubblewrap.pid);
    WaitForOrphans();
    if (!stands) {
        std::string message = ReadAll(messages.read.Get());
        message.erase(message.find_last_not_of(" \n") + 1);
        Say(ExplainRefusal(message));
        return kExitNoSandbox;
    }
    return status;
}

} // namespace

int RunOutside(const Options& aOptions)
{
    const std::string problem = ProblemWithStack(aOptions.stackFolder);
    if (!problem.empty()) {
        Say(problem);
        return kExitNoSandbox;
    }
    UniqueFd record;
    UniqueFd recordSystem;
    if (!aOptions.recordFile.empty() && (!OpenRecord(aOptions.recordFile, record) ||
                                         !OpenRecord(SystemRecordFile(aOptions.recordFile), recordSystem))) {
        return kExitNoSandbox;
    }

    InsideSettings settings;
    settings.recordFd = record.Get();
    settings.recordSystemFd = recordSystem.Get();
    settings.command = aOptions.command;
    // Ctrl-C is for the program; how that ends is what we report.
    settings.ignoresInterrupt = std::signal(SIGINT, SIG_IGN) == SIG_IGN;
    std::signal(SIGQUIT, SIG_IGN);

    PrivateCgroup cgroup;
    settings.wantsManager = aOptions.wantsLifecycleManager && cgroup.Enter(settings.noManagerReason);
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const int status = RunBubblewrap(aOptions, cgroup.Folder(), settings);
    cgroup.Leave();
    return status;
}

} // namespace sandbox
