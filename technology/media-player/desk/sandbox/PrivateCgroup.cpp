#include "PrivateCgroup.h"

#include <fcntl.h>
#include <linux/sched.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr int kCleaningLimitMs = 10000;

// The caller's own group, as the kernel names it in the unified hierarchy: "/user.slice/…".
std::string OwnGroupName()
{
    std::istringstream groups(ReadTextFile("/proc/self/cgroup"));
    for (std::string line; std::getline(groups, line);) {
        if (line.compare(0, 3, "0::") == 0) {
            return line.substr(3);
        }
    }
    return {};
}

// The group's folder below one mount of the hierarchy; empty when this mount shows another part of it.
std::string FolderBelow(const std::string& aMount, const std::string& aGroupName)
{
    // id, parent, device, root, mount point, …
    std::istringstream fields(aMount);
    std::string skipped;
    std::string root;
    std::string point;
    fields >> skipped >> skipped >> skipped >> root >> point;
    const fs::path below = fs::path(aGroupName).lexically_relative(root);
    if (below.empty() || *below.begin() == "..") {
        return {};
    }
    return below == "." ? point : (fs::path(point) / below).string();
}

// The caller's own group as a folder. Empty when the machine has no unified hierarchy mounted, or not this
// part of it.
std::string OwnGroup()
{
    const std::string name = OwnGroupName();
    std::istringstream mounts(ReadTextFile("/proc/self/mountinfo"));
    std::string folder;
    for (std::string line; !name.empty() && folder.empty() && std::getline(mounts, line);) {
        if (line.find(" - cgroup2 ") != std::string::npos) {
            folder = FolderBelow(line, name);
        }
    }
    return folder;
}

// A new group in that folder; empty, with errno, when none can be made.
std::string MakeGroup(const std::string& aParent)
{
    const std::string folder = aParent + "/mpl-sandbox-" + std::to_string(getpid());
    for (int attempt = 0; attempt < 100; ++attempt) {
        // A group of that name may be left of another sandbox's, or be another process id space's.
        std::string name = attempt > 0 ? folder + "-" + std::to_string(attempt) : folder;
        if (mkdir(name.c_str(), 0755) == 0) {
            return name;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return {};
}

bool MoveIn(const std::string& aFolder)
{
    const UniqueFd members(open((aFolder + "/cgroup.procs").c_str(), O_WRONLY | O_CLOEXEC));
    return members.IsValid() && WriteAll(members.Get(), "0");
}

// Groups are removed from the leaves up; the kernel refuses while a process is left in one.
bool RemoveTree(const std::string& aFolder)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(aFolder, error)) {
        if (entry.is_directory(error)) {
            RemoveTree(entry.path().string());
        }
    }
    return rmdir(aFolder.c_str()) == 0 || errno == ENOENT;
}

// Waits for the group's last process to go, then removes the group.
void Clean(const std::string& aFolder)
{
    const long long end = NowMs() + kCleaningLimitMs;
    WriteTextFile(aFolder + "/cgroup.kill", "1");
    const UniqueFd events(open((aFolder + "/cgroup.events").c_str(), O_RDONLY | O_CLOEXEC));
    while (!RemoveTree(aFolder) && NowMs() < end) {
        // Reading arms the notification; the short limit covers a change between removal and reading.
        lseek(events.Get(), 0, SEEK_SET);
        ReadAll(events.Get());
        pollfd change = {events.Get(), POLLPRI, 0};
        poll(&change, 1, 20);
    }
}

// Whoever reads the sandbox's output must see it end with the sandbox, so nothing of it is held open.
void CloseAllBut(int aFd)
{
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, standard);
    }
    const auto kept = static_cast<unsigned>(aFd);
    close_range(STDERR_FILENO + 1, kept - 1, 0);
    close_range(kept + 1, ~0U, 0);
}

// Waits until `aAlive` closes, and is then the only one to clean up, whatever ended the others.
[[noreturn]] void RunCleaner(const std::string& aFolder, int aAlive)
{
    setpgid(0, 0);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        std::signal(signal, SIG_IGN);
    }
    CloseAllBut(aAlive);
    ReadAll(aAlive);
    Clean(aFolder);
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
    m_Folder = MakeGroup(parent);
    if (m_Folder.empty()) {
        aReason = WithErrno("no control group can be made in " + parent, errno);
        return false;
    }
    // A process group of its own keeps the cleaner apart from the sandbox's processes; both sides set it, so
    // that it holds whoever runs first.
    if (!StartCleaner() || setpgid(m_Cleaner, m_Cleaner) != 0 || !CanFork()) {
        aReason = WithErrno("no process can be started in " + m_Folder, errno);
        Remove();
        return false;
    }
    return true;
}

pid_t PrivateCgroup::Fork() const
{
    if (m_Folder.empty()) {
        return fork();
    }
    const UniqueFd group(open(m_Folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    clone_args arguments = {};
    arguments.flags = CLONE_INTO_CGROUP;
    arguments.exit_signal = SIGCHLD;
    arguments.cgroup = static_cast<__u64>(group.Get());
    auto child = static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
    if (child >= 0) {
        return child;
    }
    // Kernels before 5.7 can't, and some containers forbid it.
    child = fork();
    if (child == 0 && !MoveIn(m_Folder)) {
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
        RunCleaner(m_Folder, alive.read.Get());
    }
    m_Alive = std::move(alive.write);
    return m_Cleaner > 0;
}

void PrivateCgroup::Remove()
{
    if (m_Folder.empty()) {
        return;
    }
    m_Alive.Close();
    if (m_Cleaner > 0) {
        WaitForEnd(m_Cleaner);
    }
    RemoveTree(m_Folder);
    m_Folder.clear();
}

} // namespace sandbox
