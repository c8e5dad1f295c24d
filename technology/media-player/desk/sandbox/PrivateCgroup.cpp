#include "PrivateCgroup.h"

#include "ControlGroups.h"

#include <fcntl.h>
#include <linux/sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace sandbox
{

namespace
{

constexpr int kCleaningLimitMs = 10000;

bool MoveIn(const std::string& aFolder)
{
    const UniqueFd members(open((aFolder + "/cgroup.procs").c_str(), O_WRONLY | O_CLOEXEC));
    return members.IsValid() && WriteAll(members.Get(), "0");
}

// Whoever reads the sandbox's output must see it end with the sandbox, so nothing of it is held open.
void CloseAllBut(std::array<int, 2> aKept)
{
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, standard);
    }
    std::sort(aKept.begin(), aKept.end());
    unsigned next = STDERR_FILENO + 1;
    for (const int kept : aKept) {
        const auto number = static_cast<unsigned>(kept);
        if (number > next) {
            close_range(next, number - 1, 0);
        }
        next = number + 1;
    }
    close_range(next, ~0U, 0);
}

// Waits until `aAlive` closes, and is then the only one to clean up, whatever ended the others.
[[noreturn]] void RunCleaner(const OwnedGroup& aGroup, int aAlive)
{
    setpgid(0, 0);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        std::signal(signal, SIG_IGN);
    }
    CloseAllBut({aAlive, aGroup.lock.Get()});
    ReadAll(aAlive);
    EndGroup(aGroup.folder, kCleaningLimitMs);
    _exit(0);
}

} // namespace

bool PrivateCgroup::Make(std::string& aReason)
{
    const std::string parent = OwnGroup();
    if (parent.empty()) {
        aReason = "this machine has no cgroup2 file system";
        return false;
    }
    SweepLeftGroups(parent);
    m_Group = MakeOwnedGroup(parent);
    if (Folder().empty()) {
        aReason = WithErrno("no control group can be made in " + parent, errno);
        return false;
    }
    // A process group of its own keeps the cleaner apart from the sandbox's processes; both sides set it, so
    // that it holds whoever runs first.
    if (!StartCleaner() || setpgid(m_Cleaner, m_Cleaner) != 0 || !CanFork()) {
        aReason = WithErrno("no process can be started in " + Folder(), errno);
        Remove();
        return false;
    }
    return true;
}

pid_t PrivateCgroup::Fork(unsigned aNamespaces) const
{
    const UniqueFd group(open(Folder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    clone_args arguments = {};
    arguments.flags = aNamespaces;
    arguments.exit_signal = SIGCHLD;
    if (group.IsValid()) {
        arguments.flags |= CLONE_INTO_CGROUP;
        arguments.cgroup = static_cast<__u64>(group.Get());
    }
    auto child = static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
    if (child >= 0) {
        return child;
    }
    // Kernels before 5.7 can't, and some containers forbid it.
    child = fork();
    if (child == 0 && !Folder().empty() && !MoveIn(Folder())) {
        _exit(errno);
    }
    return child;
}

// Whether the caller may: the group's files don't tell, as it depends on the groups above as well.
bool PrivateCgroup::CanFork() const
{
    const pid_t child = Fork();
    if (child == 0) {
        _exit(0);
    }
    if (child > 0) {
        errno = WaitForEnd(child);
    }
    return child > 0 && errno == 0;
}

bool PrivateCgroup::StartCleaner()
{
    Pipe alive = MakePipe();
    m_Cleaner = alive.read.IsValid() ? fork() : -1;
    if (m_Cleaner == 0) {
        RunCleaner(m_Group, alive.read.Get());
    }
    m_Alive = std::move(alive.write);
    return m_Cleaner > 0;
}

void PrivateCgroup::Remove()
{
    if (Folder().empty()) {
        return;
    }
    m_Alive.Close();
    if (m_Cleaner > 0) {
        WaitForEnd(m_Cleaner);
    }
    if (IsStill(m_Group)) {
        EndGroup(Folder(), 0);
    }
    m_Group = {};
}

} // namespace sandbox
