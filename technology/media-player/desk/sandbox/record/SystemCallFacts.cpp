#include "SystemCallFacts.h"

#include "../ProcFiles.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace sandbox
{

namespace
{

constexpr long long kSecond = 1000000000;
constexpr size_t kLongestWrite = 65536;
constexpr size_t kMostPieces = 16;

using Facts = std::vector<Fact>;

std::string Number(long long aNumber)
{
    return std::to_string(aNumber);
}

Fact Now(const std::string& aKind, std::vector<std::string> aFields)
{
    return {MachineNow(), aKind, std::move(aFields)};
}

// As its process sees it.
std::string PathOf(pid_t aProcess, const std::string& aPath)
{
    return aPath.empty() || aPath.front() == '/' ? aPath : ProcFile(aProcess, "cwd/" + aPath);
}

// Why a file can't be run, in the system's words; empty when it can.
std::string ObstacleTo(const std::string& aFile)
{
    struct stat status = {};
    if (access(aFile.c_str(), X_OK) != 0 || stat(aFile.c_str(), &status) != 0) {
        return std::strerror(errno);
    }
    return S_ISREG(status.st_mode) ? "" : std::strerror(EACCES);
}

// When a process started: the kernel counts from the machine's start.
long long StartOf(const ProcessStatus& aStatus)
{
    timespec sinceStart = {};
    clock_gettime(CLOCK_BOOTTIME, &sinceStart);
    const long long age = sinceStart.tv_sec * kSecond + sinceStart.tv_nsec -
                          static_cast<long long>(SecondsOf(aStatus.startTicks) * kSecond);
    return MachineNow() - age;
}

// A signal to a process is one to all its threads, and a pid below 1 means a group.
std::vector<pid_t> Targets(pid_t aSender, pid_t aTarget)
{
    if (aTarget > 0) {
        return {aTarget};
    }
    const pid_t group = aTarget == 0 ? StatusOf(aSender).group : -aTarget;
    std::vector<pid_t> targets;
    for (const pid_t process : AllProcesses()) {
        if (aTarget == -1 ? process != aSender : StatusOf(process).group == group) {
            targets.push_back(process);
        }
    }
    return targets;
}

pid_t TargetOfHandle(pid_t aSender, uint64_t aHandle)
{
    const std::string text = ReadTextFile(ProcFile(aSender, "fdinfo/" + Number(static_cast<int>(aHandle))));
    const size_t field = text.find("\nPid:");
    return field == std::string::npos ? 0 : std::atoi(text.c_str() + field + 5);
}

// Its own id, its parent's, and that one's parent's: what is to run detached is started by a child that ends
// at once.
std::vector<std::string> Family(pid_t aProcess, pid_t aParent)
{
    return {Number(aProcess), Number(aParent), Number(StatusOf(aParent).parent)};
}

// For a process that may never start a program.
Fact ForkFact(pid_t aProcess)
{
    const ProcessStatus status = StatusOf(aProcess);
    std::vector<std::string> fields = Family(aProcess, status.parent);
    fields.insert(fields.end(), {Number(StartOf(status)), status.name});
    return Now(fact::kFork, std::move(fields));
}

Facts KillFacts(pid_t aSender, const std::vector<pid_t>& aTargets, uint64_t aSignal)
{
    Facts facts;
    for (const pid_t target : aTargets) {
        if (aSignal != 0 && target > 0) { // 0 asks whether there is such a process
            facts.push_back(ForkFact(aSender));
            facts.push_back(ForkFact(target));
            facts.push_back(
                Now(fact::kKill, {Number(aSender), Number(target), Number(static_cast<int>(aSignal))}));
        }
    }
    return facts;
}

long long Nanoseconds(const timespec& aTime)
{
    return aTime.tv_sec * kSecond + aTime.tv_nsec;
}

Fact PauseFact(const SystemCall& aCall, pid_t aProcess)
{
    const bool isPlain = aCall.number == SYS_nanosleep;
    timespec asked = {};
    const std::string bytes = ReadMemory(aProcess, aCall.arguments[isPlain ? 0 : 2], sizeof asked);
    std::memcpy(&asked, bytes.data(), bytes.size());
    long long length = Nanoseconds(asked);
    if (!isPlain && (aCall.arguments[1] & TIMER_ABSTIME) != 0) {
        timespec now = {};
        clock_gettime(static_cast<clockid_t>(aCall.arguments[0]), &now);
        length -= Nanoseconds(now);
    }
    return Now(fact::kPause, {Number(aProcess), Number(aCall.thread), Number(length)});
}

// What a call says it has, no more than is worth reading; a size of this machine, whatever its words are.
size_t AtMost(uint64_t aLength, size_t aMost)
{
    return static_cast<size_t>(std::min<uint64_t>(aLength, aMost));
}

// What a process writes to the terminal that this one has there, too.
Facts OutputFacts(const SystemCall& aCall, pid_t aProcess)
{
    const int stream = static_cast<int>(aCall.arguments[0]);
    struct stat here = {};
    struct stat there = {};
    if (fstat(stream, &here) != 0 || stat(ProcFile(aProcess, "fd/" + Number(stream)).c_str(), &there) != 0 ||
        here.st_rdev != there.st_rdev || here.st_ino != there.st_ino) {
        return {};
    }
    std::string bytes;
    if (aCall.number == SYS_write) {
        bytes = ReadMemory(aProcess, aCall.arguments[1], AtMost(aCall.arguments[2], kLongestWrite));
    } else {
        std::vector<iovec> pieces(AtMost(aCall.arguments[2], kMostPieces));
        const std::string list = ReadMemory(aProcess, aCall.arguments[1], pieces.size() * sizeof(iovec));
        std::memcpy(pieces.data(), list.data(), list.size());
        for (const iovec& piece : pieces) {
            bytes += ReadMemory(aProcess, reinterpret_cast<uint64_t>(piece.iov_base),
                                AtMost(piece.iov_len, kLongestWrite));
        }
    }
    return {Now(fact::kOutput, {stream == STDOUT_FILENO ? "out" : "err", bytes})};
}

} // namespace

std::vector<pid_t> SystemCallFacts::TakeOne()
{
    const std::optional<SystemCall> call = ReceiveCall(m_Listener);
    if (!call) {
        return {};
    }
    std::vector<pid_t> found;
    const pid_t process = ProcessOf(call->thread);
    const Facts facts = FactsOf(*call, process, found);
    std::for_each(facts.begin(), facts.end(), [this](const Fact& aFact) { m_Crashes.Follow(aFact); });
    if (LetGo(m_Listener, *call)) {
        for (const Fact& fact : facts) {
            m_Facts(fact);
        }
    }
    return found;
}

Facts SystemCallFacts::FactsOf(const SystemCall& aCall, pid_t aProcess, std::vector<pid_t>& aNew)
{
    const auto& given = aCall.arguments;
    switch (aCall.number) {
    case SYS_execve:
        aNew.push_back(aProcess);
        return {ExecFact(aProcess, ReadText(aProcess, given[0]), given[1])};
    case SYS_execveat: {
        aNew.push_back(aProcess);
        const std::string path = ReadText(aProcess, given[1]);
        const std::string file = ProcFile(aProcess, "fd/" + Number(static_cast<int>(given[0])));
        return {ExecFact(aProcess, path.empty() ? file : path, given[2])};
    }
    case SYS_exit_group:
        return ExitFacts(aCall, aProcess, aNew);
    case SYS_pidfd_send_signal:
        return KillFacts(aProcess, {TargetOfHandle(aProcess, given[0])}, given[1]);
    case SYS_tgkill:
        return KillFacts(aProcess, {static_cast<pid_t>(given[0])}, given[2]);
    case SYS_tkill:
        return KillFacts(aProcess, {ProcessOf(static_cast<pid_t>(given[0]))}, given[1]);
    case SYS_kill:
    case SYS_rt_sigqueueinfo:
        return KillFacts(aProcess, Targets(aProcess, static_cast<pid_t>(given[0])), given[1]);
    case SYS_ptrace:
        m_Crashes.LetGo(static_cast<pid_t>(given[1]));
        return {};
    case SYS_write:
    case SYS_writev:
        return OutputFacts(aCall, aProcess);
    default:
        return {PauseFact(aCall, aProcess)};
    }
}

Fact SystemCallFacts::ExecFact(pid_t aProcess, const std::string& aPath, uint64_t aArguments) const
{
    std::vector<std::string> fields = Family(aProcess, StatusOf(aProcess).parent);
    fields.insert(fields.end(), {ObstacleTo(PathOf(aProcess, aPath)), aPath});
    const std::vector<std::string> arguments = ReadTexts(aProcess, aArguments);
    fields.insert(fields.end(), arguments.begin(), arguments.end());
    return Now(fact::kExec, std::move(fields));
}

// A program that goes to the background ends as soon as its child runs, which so is seen.
Facts SystemCallFacts::ExitFacts(const SystemCall& aCall, pid_t aProcess, std::vector<pid_t>& aNew)
{
    Facts facts;
    for (const pid_t child : ChildrenOf(aProcess)) {
        facts.push_back(ForkFact(child));
        aNew.push_back(child);
    }
    facts.push_back(
        Now(fact::kExit, {Number(aProcess), Number(static_cast<int>(aCall.arguments[0] & 0xff))}));
    return facts;
}

} // namespace sandbox
