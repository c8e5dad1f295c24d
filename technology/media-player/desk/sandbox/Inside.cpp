#include "Inside.h"

#include "Bus.h"
#include "BusRecorder.h"
#include "LifecycleManager.h"
#include "Machine.h"
#include "Posix.h"
#include "Preloading.h"
#include "RunningClock.h"
#include "ServiceBuses.h"
#include "Speed.h"
#include "TestProgram.h"
#include "World.h"
#include "record/Alarm.h"
#include "record/Recording.h"
#include "record/UnwellUnits.h"
#include "record/Witness.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <optional>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr time_t kKeptSeconds = 3600;

// The descriptors are for this process alone.
void TakeOver(const InsideSettings& aSettings)
{
    dup2(aSettings.stderrFd, STDERR_FILENO);
    close(aSettings.stderrFd);
    WriteAll(aSettings.readyFd, "+");
    close(aSettings.readyFd);
    for (const int record : {aSettings.recordFd, aSettings.recordSystemFd, aSettings.factsFd,
                             aSettings.wholeTestFd, aSettings.wholeSystemFd}) {
        if (record >= 0) {
            fcntl(record, F_SETFD, FD_CLOEXEC);
        }
    }
}

// The stack's etc is a copy, so that a test can change it.
bool CopyStackEtc()
{
    std::error_code error;
    if (!fs::exists(kPrivateStackEtc, error)) {
        return true;
    }
    const fs::path etc = kStackFolder + "/etc";
    fs::copy(kPrivateStackEtc, etc, fs::copy_options::recursive | fs::copy_options::overwrite_existing,
             error);
    if (error) {
        Say("the stack's etc can't be copied: " + error.message());
        return false;
    }
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(etc, error)) {
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, error);
    }
    return true;
}

// For who enters later, as nobody sees what a running program has set.
void KeepEnvironment()
{
    std::string lines;
    for (const char* name :
         {"MPL_SANDBOX", "MPL_SANDBOX_LIFECYCLE_MANAGER", kSpeedVariable, "XDG_RUNTIME_DIR",
          "DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS", "TMPDIR"}) {
        lines += std::string(name) + "=" + std::getenv(name) + "\n";
    }
    WriteTextFile(kPrivateEnvironment, lines);
}

void SetEnvironment(const InsideSettings& aSettings)
{
    setenv("MPL_SANDBOX", "1", 1);
    setenv(kSpeedVariable, aSettings.speed.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", RuntimeFolder().c_str(), 1);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", BusAddress().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", BusAddress().c_str(), 1);
    setenv("TMPDIR", kPrivateTempFolder.c_str(), 1);
}

bool FindMachine(const InsideSettings& aSettings)
{
    std::string reason;
    if (!BringInMachine(aSettings.cgroupFolder, reason)) {
        Say(reason);
        return false;
    }
    const char* home = std::getenv("HOME");
    if (chdir(aSettings.workingFolder.c_str()) == 0) {
        setenv("PWD", aSettings.workingFolder.c_str(), 1);
    } else if (home != nullptr && chdir(home) == 0) {
        setenv("PWD", home, 1);
    }
    return true;
}

// Starts the clock that the program is to live by. The status to end with when there can't be one, otherwise
// 0.
int StartClockFor(const InsideSettings& aSettings, RunningClock& aClock)
{
    if (aSettings.faketime.empty()) {
        return 0;
    }
    const std::string& program = aSettings.command.front();
    if (const std::string obstacle = ObstacleToPreloading(program); !obstacle.empty()) {
        Say("the program " + program + " " + obstacle + WhyNotAtSpeed(aSettings.speed));
        return kExitCannotRun;
    }
    std::string reason;
    if (!StartClock(aSettings.speed, aSettings.faketime, aClock, reason)) {
        Say(reason);
        return kExitNoSandbox;
    }
    FactLog(aSettings.factsFd).Write(fact::kClock, {aSettings.speed, std::to_string(aClock.clock.start)});
    return 0;
}

bool StartBus(const InsideSettings& aSettings, const RunningClock& aClock)
{
    std::string reason = aSettings.noManagerReason;
    const bool hasManager = aSettings.wantsManager && StartLifecycleManager(aClock.preload, reason);
    setenv("MPL_SANDBOX_LIFECYCLE_MANAGER", hasManager ? "systemd" : "none", 1);
    if (hasManager) {
        return true;
    }
    if (!reason.empty()) {
        Say("the lifecycle manager is not available (" + reason + "): services can't be handed to it");
    }
    if (!StartPlainBus(reason)) {
        Say(reason);
        return false;
    }
    return true;
}

// Lets a sandbox whose program failed stand, to be looked at.
void Keep(const InsideSettings& aSettings, int aStatus)
{
    const std::string pid = std::to_string(aSettings.outsidePid);
    Say("the program ended with exit status " + std::to_string(aStatus) +
        "; its sandbox stands for an hour: look around with 'mpl-sandbox --enter " + pid +
        "', end it with Ctrl-C or 'kill " + pid + "'");
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupt, nullptr);
    std::signal(SIGINT, SIG_DFL); // what is ignored never arrives
    const timespec limit = {kKeptSeconds, 0};
    while (sigtimedwait(&interrupt, nullptr, &limit) < 0 && errno == EINTR) {
    }
}

// Sets all up, runs the program and tells its status.
int RunAll(const InsideSettings& aSettings)
{
    if (!FindMachine(aSettings)) {
        return kExitNoSandbox;
    }
    SetEnvironment(aSettings);
    RunningClock clock;
    if (const int problem = StartClockFor(aSettings, clock); problem != 0) {
        return problem;
    }
    if (!CopyStackEtc() || !StartBus(aSettings, clock)) {
        return kExitNoSandbox;
    }
    KeepEnvironment();
    std::optional<BusRecorder> system;
    std::optional<BusRecorder> test;
    if (aSettings.recordFd >= 0 || (aSettings.wholeTestFd >= 0 && !aSettings.isLight)) {
        const auto file = [&](int aFd) { return PcapFile(aFd, clock.clock); };
        system.emplace(BusSocket(), BusRecord{file(aSettings.recordSystemFd), file(aSettings.wholeSystemFd)});
        test.emplace(kTestBusSocket, BusRecord{file(aSettings.recordFd), file(aSettings.wholeTestFd)});
    }
    const int status = RunTestProgram(aSettings, clock);
    if (status != 0) {
        NoteUnwellUnits(FactLog(aSettings.factsFd));
    }
    if (status != 0 && aSettings.isKept) {
        Keep(aSettings, status);
    }
    return status;
}

int RunObserved(const InsideSettings& aSettings)
{
    const FactLog log(aSettings.factsFd);
    Alarm alarm(Say);
    ServiceBuses buses(aSettings);
    size_t left = aSettings.isLight ? kMostOutputInMemory : std::numeric_limits<size_t>::max();
    const auto take = [&](const Fact& aFact) {
        const size_t size = aFact.kind == fact::kOutput ? aFact.fields[1].size() : 0;
        if (size <= left) {
            left -= size;
            log.Write(aFact);
        } else {
            left = 0;
        }
        buses.Take(aFact);
        alarm.Take(aFact);
    };
    CrashWatch crashes(log, aSettings.command.front());
    const int status = RunWitnessed(take, crashes, aSettings.isLight ? Detail::Light : Detail::Full,
                                    [&aSettings] { return RunAll(aSettings); });
    buses.End(status == 0);
    kill(-1, SIGKILL); // while nothing is refused to what still runs: with this process the witness ends
    return status;
}

} // namespace

int RunInside(const InsideSettings& aSettings)
{
    if (aSettings.command.empty()) {
        Say("internal call; see mpl-sandbox --help");
        return kExitBadUsage;
    }
    TakeOver(aSettings);
    return aSettings.factsFd < 0 ? RunAll(aSettings) : RunObserved(aSettings);
}

} // namespace sandbox
