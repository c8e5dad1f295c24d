#include "Outside.h"

#include "Bubblewrap.h"
#include "Enclosure.h"
#include "Observer.h"
#include "Posix.h"
#include "PrivateCgroup.h"
#include "Speed.h"
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

// Empty when the stack can be run, and at that speed.
std::string ProblemWith(const Options& aOptions)
{
    if (OwnExecutable().empty()) {
        return "/proc is missing here, as in a plain chroot: run 'mount -t proc proc /proc' as root";
    }
    const std::string problem = ProblemWithStack(aOptions.stackFolder);
    const std::string obstacle = problem.empty() && ParseSpeed(aOptions.speed) > 1
                                     ? ObstacleInStack(aOptions.stackFolder)
                                     : std::string();
    return obstacle.empty() ? problem : obstacle + WhyNotAtSpeed(aOptions.speed);
}

// False, with a message, when the clock can't have the speed that is asked for.
bool FindClock(const Options& aOptions, Places& aPlaces, InsideSettings& aSettings)
{
    aSettings.speed = aOptions.speed;
    if (ParseSpeed(aOptions.speed) == 1) {
        return true;
    }
    aSettings.faketime = FindFaketime();
    aPlaces.clockLibrary = FindOwnLibrary("libmpl-clock.so");
    if (aSettings.faketime.empty()) {
        Say("libfaketime is missing, without which the only speed is 1: install the package libfaketime");
    } else if (aPlaces.clockLibrary.empty()) {
        Say("libmpl-clock.so is missing, without which the only speed is 1: build it, or install the package "
            "mpl-test-support-sandbox");
    }
    return !aSettings.faketime.empty() && !aPlaces.clockLibrary.empty();
}

} // namespace

int RunOutside(const Options& aOptions)
{
    const std::string problem = ProblemWith(aOptions);
    if (!problem.empty()) {
        Say(problem);
        return kExitNoSandbox;
    }
    Places places;
    places.stackFolder = aOptions.stackFolder;
    InsideSettings settings;
    Records records;
    if (!FindClock(aOptions, places, settings) || !OpenRecords(aOptions.recordFile, records)) {
        return kExitNoSandbox;
    }
    Observer observer;
    if (!observer.Begin(aOptions)) {
        return kExitNoSandbox;
    }
    observer.Tell(settings);
    settings.recordFd = records.testBus.Get();
    settings.recordSystemFd = records.sandboxBus.Get();
    settings.timeLimit = aOptions.timeLimit;
    settings.isKept = aOptions.isKept;
    settings.outsidePid = getpid();
    settings.command = aOptions.command;
    std::error_code error;
    settings.workingFolder = fs::current_path(error).string();
    // Ctrl-C is for the program; how that ends is what we report.
    settings.ignoresInterrupt = std::signal(SIGINT, SIG_IGN) == SIG_IGN;
    std::signal(SIGQUIT, SIG_IGN);

    PrivateCgroup cgroup;
    settings.wantsManager = aOptions.wantsLifecycleManager && cgroup.Make(settings.noManagerReason);
    settings.cgroupFolder = cgroup.Folder();
    if (settings.wantsManager) {
        places.hasCgroup = true;
        places.managerLibrary = FindOwnLibrary("libmpl-manager.so");
    }
    const int status = RunEnclosed(cgroup, [&] {
        return RunBubblewrap(BubblewrapArguments(places), settings, {observer.Out(), observer.Err()});
    });
    observer.End(status);
    return status;
}

} // namespace sandbox
