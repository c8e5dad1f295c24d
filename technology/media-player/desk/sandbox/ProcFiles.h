/// What /proc tells of processes.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace sandbox
{

std::string ProcFile(pid_t aProcess, const std::string& aName);

/// The command line; empty when the process is gone or a zombie.
std::vector<std::string> ArgumentsOf(pid_t aProcess);

/// /proc/PID/stat. All fields are 0 or empty when the process is gone.
struct ProcessStatus {
    std::string name; ///< at most 15 characters
    char state = 0;   ///< Z: has ended
    pid_t parent = 0;
    pid_t group = 0;
    long long startTicks = 0; ///< since the machine's start
    int waitStatus = 0;       ///< of a zombie, where this user may see it
};
ProcessStatus StatusOf(pid_t aProcess);

/// Of a moment in those ticks.
double SecondsOf(long long aTicks);

/// The process that this thread is of; 0 when it is gone.
pid_t ProcessOf(pid_t aThread);

std::vector<pid_t> ChildrenOf(pid_t aProcess);

/// All that this process can see.
std::vector<pid_t> AllProcesses();

} // namespace sandbox
