#include "CrashWatch.h"

#include "../Posix.h"
#include "../ProcFiles.h"
#include "Backtrace.h"
#include "StackProgram.h"

#include <sys/ptrace.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace sandbox
{

namespace
{

constexpr int kEventShift = 8;
constexpr int kSignalMask = 0xff;
constexpr int kLongestLetGoMs = 100;
constexpr unsigned kLongestWritingSeconds = 10;

bool StopsGroup(int aSignal)
{
    return aSignal == SIGSTOP || aSignal == SIGTSTP || aSignal == SIGTTIN || aSignal == SIGTTOU;
}

// A mask of /proc/PID/status.
bool HasSignal(const std::string& aStatus, const std::string& aMask, int aSignal)
{
    const size_t field = aStatus.find("\n" + aMask + ":");
    const unsigned long long mask =
        field == std::string::npos ? 0
                                   : std::strtoull(aStatus.c_str() + field + aMask.size() + 2, nullptr, 16);
    return (mask >> (aSignal - 1) & 1) != 0;
}

// A program may take such a signal itself.
bool IsFatal(pid_t aThread, int aSignal)
{
    const std::string status = IsCrash(aSignal) ? ReadTextFile(ProcFile(aThread, "status")) : std::string();
    return !status.empty() && !HasSignal(status, "SigCgt", aSignal) && !HasSignal(status, "SigIgn", aSignal);
}

long Trace(__ptrace_request aRequest, pid_t aThread, long aData)
{
    return ptrace(aRequest, aThread, nullptr, aData);
}

} // namespace

void CrashWatch::Follow(const Fact& aFact)
{
    constexpr size_t kFirstArgument = 5;
    if (aFact.kind != fact::kExec || aFact.fields.empty()) {
        return;
    }
    const bool isProgram = aFact.fields.size() > kFirstArgument && aFact.fields[1] == m_Root &&
                           aFact.fields[kFirstArgument] == m_Program;
    const pid_t process = std::atoi(aFact.fields.front().c_str());
    const bool isWanted = isProgram || !ServiceOf(aFact).empty();
    // One that is followed already must not be asked for: its exec waits for us to take its threads' ends.
    if (isWanted && !m_HasGivenUp && m_Threads.count(process) == 0 &&
        Trace(PTRACE_SEIZE, process, PTRACE_O_TRACECLONE) == 0) {
        m_Threads[process] = process;
    }
}

bool CrashWatch::Take(const siginfo_t& aChange)
{
    const pid_t thread = aChange.si_pid;
    if (aChange.si_code == CLD_TRAPPED) {
        m_Threads.insert({thread, ProcessOf(thread)});
        TakeStop(thread, aChange.si_status & kSignalMask, aChange.si_status >> kEventShift);
        return true;
    }
    const auto found = m_Threads.find(thread);
    const bool isProcess = found == m_Threads.end() || found->second == thread;
    if (found != m_Threads.end()) {
        m_Threads.erase(found);
    }
    m_Free.erase(thread);
    return m_Writers.erase(thread) != 0 || !isProcess;
}

void CrashWatch::TakeStop(pid_t aThread, int aSignal, int aEvent)
{
    const int passedOn = aEvent == 0 ? aSignal : 0;
    if (aEvent == 0 && IsFatal(aThread, aSignal)) {
        NoteCrash(aThread, aSignal);
    }
    if (m_Free.count(m_Threads[aThread]) != 0) {
        Trace(PTRACE_DETACH, aThread, passedOn);
        m_Threads.erase(aThread);
    } else if (aEvent == PTRACE_EVENT_STOP && StopsGroup(aSignal)) {
        Trace(PTRACE_LISTEN, aThread, 0);
    } else {
        Trace(PTRACE_CONT, aThread, passedOn);
    }
}

// Its end is not held up by what takes time.
void CrashWatch::NoteCrash(pid_t aThread, int aSignal)
{
    const pid_t process = m_Threads[aThread];
    const long long time = MachineNow();
    const Backtrace backtrace(process, aThread);
    const pid_t writer = backtrace.IsEmpty() ? -1 : fork();
    if (writer == 0) {
        alarm(kLongestWritingSeconds);
        std::vector<std::string> fields = {std::to_string(process), std::to_string(aSignal)};
        const std::vector<std::string> names = backtrace.Names();
        fields.insert(fields.end(), names.begin(), names.end());
        m_Facts.Write({time, fact::kCrash, fields});
        _exit(0);
    }
    if (writer > 0) {
        m_Writers.insert(writer);
    }
}

void CrashWatch::LetGo(pid_t aThread)
{
    const pid_t process = ProcessOf(aThread);
    m_Free.insert(process);
    const auto isOfIt = [process](const auto& aTraced) { return aTraced.second == process; };
    const long long limit = NowMs() + kLongestLetGoMs;
    for (const auto& [thread, of] : m_Threads) {
        if (of == process) {
            Trace(PTRACE_INTERRUPT, thread, 0);
        }
    }
    while (std::any_of(m_Threads.begin(), m_Threads.end(), isOfIt) && NowMs() < limit) {
        const std::map<pid_t, pid_t> threads = m_Threads;
        for (const auto& [thread, of] : threads) {
            siginfo_t change = {};
            if (of == process && waitid(P_PID, static_cast<id_t>(thread), &change, WSTOPPED | WNOHANG) == 0 &&
                change.si_pid != 0) {
                Take(change);
            }
        }
        usleep(100);
    }
}

void CrashWatch::LetAllGo()
{
    m_HasGivenUp = true;
    std::set<pid_t> processes;
    for (const auto& [thread, process] : m_Threads) {
        processes.insert(process);
    }
    std::for_each(processes.begin(), processes.end(), [this](pid_t aProcess) { LetGo(aProcess); });
}

void CrashWatch::Finish() const
{
    std::for_each(m_Writers.begin(), m_Writers.end(), sandbox::WaitForEnd);
}

} // namespace sandbox
