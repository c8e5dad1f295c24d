#include "ProcFiles.h"

#include "Posix.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace sandbox
{

std::string ProcFile(pid_t aProcess, const std::string& aName)
{
    return "/proc/" + std::to_string(aProcess) + "/" + aName;
}

std::vector<std::string> ArgumentsOf(pid_t aProcess)
{
    std::istringstream text(ReadTextFile(ProcFile(aProcess, "cmdline")));
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(text, argument, '\0');) {
        arguments.push_back(argument);
    }
    return arguments;
}

ProcessStatus StatusOf(pid_t aProcess)
{
    const std::string text = ReadTextFile(ProcFile(aProcess, "stat"));
    // "pid (name) state …", where the name may hold anything.
    const size_t begin = text.find('(');
    const size_t end = text.rfind(')');
    ProcessStatus status;
    if (begin == std::string::npos || end == std::string::npos) {
        return status;
    }
    status.name = text.substr(begin + 1, end - begin - 1);
    std::istringstream rest(text.substr(end + 1));
    rest >> status.state >> status.parent >> status.group;
    std::string skipped;
    for (int field = 6; field < 22; ++field) {
        rest >> skipped;
    }
    rest >> status.startTicks;
    for (int field = 23; field < 52; ++field) {
        rest >> skipped;
    }
    rest >> status.waitStatus;
    return status;
}

double SecondsOf(long long aTicks)
{
    return static_cast<double>(aTicks) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

pid_t ProcessOf(pid_t aThread)
{
    const std::string kField = "\nTgid:";
    const std::string text = ReadTextFile(ProcFile(aThread, "status"));
    const size_t field = text.find(kField);
    return field == std::string::npos ? 0 : std::atoi(text.c_str() + field + kField.size());
}

std::vector<pid_t> ChildrenOf(pid_t aProcess)
{
    std::istringstream text(
        ReadTextFile(ProcFile(aProcess, "task/" + std::to_string(aProcess) + "/children")));
    std::vector<pid_t> children;
    for (pid_t child = 0; text >> child;) {
        children.push_back(child);
    }
    return children;
}

std::vector<pid_t> AllProcesses()
{
    std::vector<pid_t> processes;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        if (const pid_t process = std::atoi(entry.path().filename().c_str()); process > 0) {
            processes.push_back(process);
        }
    }
    return processes;
}

} // namespace sandbox
