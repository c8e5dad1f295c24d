#include "Posix.h"

#include "ProgramPath.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>

namespace sandbox
{

namespace
{

// Becomes the command, or writes the errno that stopped it and ends.
[[noreturn]] void Execute(const std::vector<std::string>& aCommand, int aReport)
{
    std::vector<char*> arguments;
    arguments.reserve(aCommand.size() + 1);
    for (const std::string& argument : aCommand) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    // Each folder that execvp tries in vain is a system call of which who looks on is told.
    const std::string file = FindProgram(aCommand.front());
    execvp(file.empty() ? arguments[0] : file.c_str(), arguments.data());
    WriteAll(aReport, std::to_string(errno));
    _exit(kExitCannotRun);
}

} // namespace

UniqueFd& UniqueFd::operator=(UniqueFd&& aOther) noexcept
{
    if (this != &aOther) {
        Close();
        m_Fd = aOther.Release();
    }
    return *this;
}

int UniqueFd::Release()
{
    return std::exchange(m_Fd, -1);
}

void UniqueFd::Close()
{
    if (m_Fd >= 0) {
        close(std::exchange(m_Fd, -1));
    }
}

Pipe MakePipe()
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

bool WriteAll(int aFd, std::string_view aText)
{
    while (!aText.empty()) {
        const ssize_t written = write(aFd, aText.data(), aText.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        aText.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

std::string ReadAll(int aFd)
{
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(aFd, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return text;
        }
        text.append(buffer, static_cast<size_t>(count));
    }
}

std::string ReadTextFile(const std::string& aPath)
{
    const UniqueFd file(open(aPath.c_str(), O_RDONLY | O_CLOEXEC));
    return file.IsValid() ? ReadAll(file.Get()) : std::string();
}

bool WriteTextFile(const std::string& aPath, std::string_view aText)
{
    const UniqueFd file(open(aPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    return file.IsValid() && WriteAll(file.Get(), aText);
}

void Say(const std::string& aText)
{
    WriteAll(STDERR_FILENO, std::string(program_invocation_short_name) + ": " + aText + "\n");
}

std::string SignalText(int aNumber)
{
    const char* words = sigdescr_np(aNumber);
    return "signal " + std::to_string(aNumber) + (words != nullptr ? " (" + std::string(words) + ")" : "");
}

bool IsCrash(int aSignal)
{
    constexpr int kCrashes[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS};
    return std::find(std::begin(kCrashes), std::end(kCrashes), aSignal) != std::end(kCrashes);
}

std::string WithErrno(const std::string& aText, int aErrno)
{
    return aText + ": " + std::strerror(aErrno);
}

Spawned Spawn(const std::vector<std::string>& aCommand, const std::function<void()>& aInChild)
{
    // The pipe closes when the command runs; before that it carries the reason why it can't.
    Pipe report = MakePipe();
    const pid_t pid = report.read.IsValid() ? fork() : -1;
    if (pid < 0) {
        return {-1, errno};
    }
    if (pid == 0) {
        if (aInChild) {
            aInChild();
        }
        Execute(aCommand, report.write.Get());
    }
    report.write.Close();
    const std::string reason = ReadAll(report.read.Get());
    if (reason.empty()) {
        return {pid, 0};
    }
    WaitForEnd(pid);
    return {-1, std::atoi(reason.c_str())};
}

UniqueFd HandleOf(pid_t aProcess)
{
    return UniqueFd(static_cast<int>(syscall(SYS_pidfd_open, aProcess, 0)));
}

void DieWithParent(int aPipe)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have ended before the kernel was asked to watch it. Its process id doesn't tell: in
    // other process id spaces it has none.
    pollfd end = {aPipe, 0, 0};
    if (poll(&end, 1, 0) != 0) {
        _exit(kExitNoSandbox);
    }
}

int WaitForEnd(pid_t aPid)
{
    int status = 0;
    while (waitpid(aPid, &status, 0) < 0) {
        if (errno != EINTR) {
            return kExitNoSandbox;
        }
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

long long NowMs()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

} // namespace sandbox
