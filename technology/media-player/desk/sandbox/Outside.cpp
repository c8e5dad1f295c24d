#include "Outside.h"

#include "Bubblewrap.h"
#include "Posix.h"
#include "PrivateCgroup.h"
#include "Stack.h"
#include "World.h"

#include <fcntl.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

std::string SystemRecordFile(const std::string& aFile)
{
    const fs::path file(aFile);
    return (file.parent_path() / (file.stem().string() + ".system" + file.extension().string())).string();
}

// The records lie outside, so they are opened here and handed in.
bool OpenRecord(const std::string& aFile, UniqueFd& aFd)
{
    aFd = UniqueFd(open(aFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644));
    if (!aFd.IsValid()) {
        Say(WithErrno("the bus traffic can't be written to " + aFile, errno));
    }
    return aFd.IsValid();
}

// Where the traffic goes; both are invalid when it goes nowhere.
struct Records {
    UniqueFd testBus;
    UniqueFd sandboxBus;
};

bool OpenRecords(const std::string& aFile, Records& aRecords)
{
    return aFile.empty() ||
           (OpenRecord(aFile, aRecords.testBus) && OpenRecord(SystemRecordFile(aFile), aRecords.sandboxBus));
}

} // namespace

int RunOutside(const Options& aOptions)
{
    const std::string problem = ProblemWithStack(aOptions.stackFolder);
    if (!problem.empty()) {
        Say(problem);
        return kExitNoSandbox;
    }
    Records records;
    if (!OpenRecords(aOptions.recordFile, records)) {
        return kExitNoSandbox;
    }
    InsideSettings settings;
    settings.recordFd = records.testBus.Get();
    settings.recordSystemFd = records.sandboxBus.Get();
    settings.command = aOptions.command;
    // Ctrl-C is for the program; how that ends is what we report.
    settings.ignoresInterrupt = std::signal(SIGINT, SIG_IGN) == SIG_IGN;
    std::signal(SIGQUIT, SIG_IGN);

    PrivateCgroup cgroup;
    settings.wantsManager = aOptions.wantsLifecycleManager && cgroup.Enter(settings.noManagerReason);
    const int status = RunBubblewrap(BubblewrapArguments(aOptions.stackFolder, cgroup.Folder()), settings);
    cgroup.Leave();
    return status;
}

} // namespace sandbox
