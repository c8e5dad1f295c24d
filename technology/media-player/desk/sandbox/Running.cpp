#include "Running.h"

#include "InsideSettings.h"
#include "Posix.h"
#include "World.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

std::string ProcFile(pid_t aProcess, const char* aName)
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

bool IsInsideHalf(const std::vector<std::string>& aArguments)
{
    return aArguments.size() > 2 && aArguments[0] == kPrivateProgram && aArguments[1] == kInsideMark;
}

// The fields of /proc/<pid>/stat from the third on; its second is a name that may hold anything.
std::vector<std::string> StatusFields(pid_t aProcess)
{
    const std::string text = ReadTextFile(ProcFile(aProcess, "stat"));
    std::istringstream rest(text.substr(std::min(text.rfind(')') + 1, text.size())));
    std::vector<std::string> fields;
    for (std::string field; rest >> field;) {
        fields.push_back(field);
    }
    return fields;
}

pid_t ParentOf(pid_t aProcess)
{
    const std::vector<std::string> fields = StatusFields(aProcess);
    return fields.size() > 1 ? std::atoi(fields[1].c_str()) : 0;
}

long long AgeSeconds(pid_t aProcess)
{
    const std::vector<std::string> fields = StatusFields(aProcess);
    const double started = fields.size() > 19 ? std::atof(fields[19].c_str()) : 0;
    const double now = std::atof(ReadTextFile("/proc/uptime").c_str());
    return std::max(0LL, static_cast<long long>(now - started / static_cast<double>(sysconf(_SC_CLK_TCK))));
}

std::string ToLine(const std::vector<std::string>& aCommand)
{
    std::string line;
    for (const std::string& argument : aCommand) {
        line += (line.empty() ? "" : " ") + argument;
    }
    return line;
}

} // namespace

std::vector<RunningSandbox> FindRunning()
{
    std::vector<RunningSandbox> found;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const pid_t process = std::atoi(entry.path().filename().c_str());
        const std::vector<std::string> arguments =
            process > 0 ? ArgumentsOf(process) : std::vector<std::string>();
        struct stat status = {};
        // The recorders are its children, with the same command line.
        if (!IsInsideHalf(arguments) || IsInsideHalf(ArgumentsOf(ParentOf(process))) ||
            stat(entry.path().c_str(), &status) != 0) {
            continue;
        }
        const InsideSettings settings = FromArguments({arguments.begin() + 2, arguments.end()});
        found.push_back({settings.outsidePid, process, status.st_uid, AgeSeconds(process), settings.speed,
                         settings.command});
    }
    std::sort(found.begin(), found.end(), [](const RunningSandbox& aLeft, const RunningSandbox& aRight) {
        return aLeft.ageSeconds > aRight.ageSeconds;
    });
    return found;
}

int ListRunning()
{
    std::printf("%8s %8s %6s  %s\n", "PID", "AGE", "SPEED", "PROGRAM");
    for (const RunningSandbox& sandbox : FindRunning()) {
        if (sandbox.user == getuid()) {
            std::printf("%8d %7llds %6s  %s\n", sandbox.pid, sandbox.ageSeconds, sandbox.speed.c_str(),
                        ToLine(sandbox.command).c_str());
        }
    }
    return 0;
}

} // namespace sandbox
