/// Small helpers over POSIX shared by the sandbox's programs.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox
{

/// Exit statuses of the sandbox itself, as env(1), timeout(1) and container runners have them. Everything
/// else is the program's own: its exit status, or 128 + N when signal N ended it.
enum ExitStatus {
    kExitBadUsage = 2,
    kExitOutOfTime = 124,
    kExitNoSandbox = 125,
    kExitCannotRun = 126,
    kExitNotFound = 127
};

/// A file descriptor that is closed with its owner.
class UniqueFd
{
public:
    UniqueFd() = default;
    explicit UniqueFd(int aFd) : m_Fd(aFd) {}
    UniqueFd(UniqueFd&& aOther) noexcept : m_Fd(aOther.Release()) {}
    UniqueFd& operator=(UniqueFd&& aOther) noexcept;
    ~UniqueFd() { Close(); }

    int Get() const { return m_Fd; }
    bool IsValid() const { return m_Fd >= 0; }
    int Release();
    void Close();

private:
    int m_Fd = -1;
};

struct Pipe {
    UniqueFd read;
    UniqueFd write;
};

/// A pipe with both ends close-on-exec; invalid ends when the process has no descriptor left.
Pipe MakePipe();

/// Writes everything, through interruptions and short writes. False when the descriptor refuses.
bool WriteAll(int aFd, std::string_view aText);

/// Reads until the end of the file.
std::string ReadAll(int aFd);

/// The file's content; empty when it can't be read.
std::string ReadTextFile(const std::string& aPath);

bool WriteTextFile(const std::string& aPath, std::string_view aText);

/// One line on stderr that begins with the program's name, in one piece.
void Say(const std::string& aText);

/// "text: what errno says"
std::string WithErrno(const std::string& aText, int aErrno);

/// "signal 11 (Segmentation fault)"
std::string SignalText(int aNumber);

/// Whether a program gets that signal for its own fault, rather than from somebody.
bool IsCrash(int aSignal);

/// What became of a Spawn: the child's process id, or the errno that stopped it from running the command.
struct Spawned {
    pid_t pid;
    int error;
};

/// Forks, runs `aInChild` in the child, then the command (looked up in PATH). Blocks
/// until the command runs or could not be run. Call it from the main thread: children that die with their
/// parent die with the *thread* that forked them.
Spawned Spawn(const std::vector<std::string>& aCommand, const std::function<void()>& aInChild = {});

/// A descriptor of the process that becomes readable when it ends; of this one, even when its id is used
/// again.
UniqueFd HandleOf(pid_t aProcess);

/// To be called in a fresh child: the kernel kills it when its parent ends, however that ends. `aPipe` is the
/// writing end of a pipe that the parent alone reads.
void DieWithParent(int aPipe);

/// Waits for the child's end; the status as a shell counts it (exit status, or 128 + signal).
int WaitForEnd(pid_t aPid);

/// Milliseconds on the monotonic clock.
long long NowMs();

} // namespace sandbox
