#include "Running.h"

#include "InsideSettings.h"
#include "Posix.h"
#include "ProcFiles.h"
#include "World.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace sandbox
{

namespace
{

bool IsInsideHalf(const std::vector<std::string>& aArguments)
{
    return aArguments.size() > 2 && aArguments[0] == kPrivateProgram && aArguments[1] == kInsideMark;
}

long long AgeSeconds(pid_t aProcess)
{
    const double now = std::atof(ReadTextFile("/proc/uptime").c_str());
    return std::max(0LL, static_cast<long long>(now - SecondsOf(StatusOf(aProcess).startTicks)));
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
    for (const pid_t process : AllProcesses()) {
        const std::vector<std::string> arguments = ArgumentsOf(process);
        struct stat status = {};
        // The recorders are its children, with the same command line.
        if (!IsInsideHalf(arguments) || IsInsideHalf(ArgumentsOf(StatusOf(process).parent)) ||
            stat(ProcFile(process, "").c_str(), &status) != 0) {
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
