#include "Bubblewrap.h"

#include "Posix.h"
#include "World.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace sandbox
{

namespace
{

struct Obstacle {
    const char* setting;
    const char* value; ///< that keeps sandboxes from being made
    const char* advice;
};

constexpr Obstacle kObstacles[] = {
    {"/proc/sys/user/max_user_namespaces", "0",
     "User namespaces are off: run 'sysctl user.max_user_namespaces=10000' as root"},
    {"/proc/sys/kernel/unprivileged_userns_clone", "0",
     "Ordinary users may make no namespaces: run 'sysctl kernel.unprivileged_userns_clone=1' as root"},
    {"/proc/sys/kernel/apparmor_restrict_unprivileged_userns", "1",
     "AppArmor restricts user namespaces: run 'sysctl kernel.apparmor_restrict_unprivileged_userns=0' as "
     "root"},
};

// What helps on this machine.
std::string Advice(const std::string& aBubblewrapMessage)
{
    if (aBubblewrapMessage.find("make / slave") != std::string::npos) {
        return "The root folder is no mount point, as in a plain chroot: run 'mount --bind DIR DIR' on its "
               "folder before you enter it";
    }
    for (const auto& [setting, value, advice] : kObstacles) {
        const std::string text = ReadTextFile(setting);
        if (text.substr(0, text.find('\n')) == value) {
            return advice;
        }
    }
    return "It needs user namespaces, or root with CAP_SYS_ADMIN: in a container, start it with "
           "--privileged, or with --security-opt seccomp=unconfined --security-opt systempaths=unconfined";
}

void ExplainRefusal(std::string aBubblewrapMessage)
{
    aBubblewrapMessage.erase(aBubblewrapMessage.find_last_not_of(" \n") + 1);
    Say("bubblewrap can't make a sandbox here" +
        (aBubblewrapMessage.empty() ? ". " : " (" + aBubblewrapMessage + "). ") + Advice(aBubblewrapMessage));
}

int ExplainFailure(int aError)
{
    Say(aError == ENOENT ? "bubblewrap is missing: install the package bubblewrap"
                         : WithErrno("bubblewrap (bwrap) can't be run", aError));
    return kExitNoSandbox;
}

// Waits for its end, but leaves taking note of that to the caller.
bool IsKilled(pid_t aProcess)
{
    siginfo_t end = {};
    while (waitid(P_PID, static_cast<id_t>(aProcess), &end, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    return end.si_code != CLD_EXITED;
}

// bubblewrap ends as soon as it knows the status. Its last child is the sandbox's process 1, which is handed
// to us; the kernel lets it end only after everything else in there.
void WaitForOrphans()
{
    while (waitpid(-1, nullptr, 0) > 0 || errno == EINTR) {
    }
}

bool HasSomething(const UniqueFd& aPipe)
{
    pollfd content = {aPipe.Get(), POLLIN, 0};
    return poll(&content, 1, 0) > 0 && (content.revents & POLLIN) != 0;
}

} // namespace

int RunBubblewrap(std::vector<std::string> aArguments, InsideSettings aSettings, const Streams& aStreams)
{
    Pipe ready = MakePipe();
    Pipe messages = MakePipe();
    const UniqueFd userStderr(dup(aStreams.err));
    aSettings.stderrFd = userStderr.Get();
    aSettings.readyFd = ready.write.Get();
    aArguments.insert(aArguments.end(), {"--", kPrivateProgram});
    const std::vector<std::string> inside = ToArguments(aSettings);
    aArguments.insert(aArguments.end(), inside.begin(), inside.end());

    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const Spawned bubblewrap = Spawn(aArguments, [&] {
        ready.read.Close();
        DieWithParent(ready.write.Get());
        for (const int given :
             {ready.write.Get(), aSettings.factsFd, aSettings.wholeTestFd, aSettings.wholeSystemFd}) {
            fcntl(given, F_SETFD, 0);
        }
        dup2(aStreams.out, STDOUT_FILENO);
        dup2(messages.write.Get(), STDERR_FILENO);
    });
    ready.write.Close();
    messages.write.Close();
    if (bubblewrap.pid < 0) {
        return ExplainFailure(bubblewrap.error);
    }
    if (IsKilled(bubblewrap.pid)) {
        return WaitForEnd(bubblewrap.pid); // its child may wait for its word for ever
    }
    const int status = WaitForEnd(bubblewrap.pid);
    if (!HasSomething(ready.read)) {
        fcntl(messages.read.Get(), F_SETFL, O_NONBLOCK); // here, too, its child may wait
        ExplainRefusal(ReadAll(messages.read.Get()));
        return kExitNoSandbox;
    }
    WaitForOrphans();
    return status;
}

} // namespace sandbox
