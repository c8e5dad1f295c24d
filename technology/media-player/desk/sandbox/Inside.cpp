#include "Inside.h"

#include "Bus.h"
#include "BusRecorder.h"
#include "LifecycleManager.h"
#include "Machine.h"
#include "Posix.h"
#include "Preloading.h"
#include "RunningClock.h"
#include "Speed.h"
#include "World.h"
#include "record/Witness.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr time_t kKeptSeconds = 3600;
constexpr const char* kLastWordsSeconds = "2";

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

// Says why the program does not run and returns the status for that.
int ExplainFailure(const std::string& aName, int aError)
{
    if (aError != ENOENT) {
        Say(WithErrno("the program " + aName + " can't be run", aError));
        return kExitCannotRun;
    }
    std::error_code error;
    Say(fs::exists(aName, error) && aName.find('/') != std::string::npos
            ? "the program " + aName + " can't be run: its interpreter is missing"
            : "the program " + aName +
                  " was not found; /run, /opt/talvex and /var/talvex of the machine are not visible in the "
                  "sandbox");
    return kExitNotFound;
}

// Within its time, if that has a limit. False when it runs on.
bool EndsInTime(pid_t aProgram, const std::string& aSeconds)
{
    const UniqueFd process = HandleOf(aProgram);
    pollfd end = {process.Get(), POLLIN, 0};
    const double milliseconds = std::strtod(aSeconds.c_str(), nullptr) * 1000;
    const long long last = NowMs() + static_cast<long long>(milliseconds);
    for (long long left = last - NowMs(); left > 0; left = last - NowMs()) {
        if (poll(&end, 1, static_cast<int>(std::min<long long>(left, 1000000))) == 1) {
            return true;
        }
    }
    return false;
}

// First it is asked to, so that it can say what it has to say.
void EndOutOfTime(pid_t aProgram, const std::string& aSeconds, const FactLog& aFacts)
{
    aFacts.Write(fact::kLimit, {aSeconds});
    Say("the program ran out of its " + aSeconds + " s; it is ended");
    kill(aProgram, SIGTERM);
    if (!EndsInTime(aProgram, kLastWordsSeconds)) {
        kill(aProgram, SIGKILL);
    }
}

// The status to end with.
int WaitForProgram(pid_t aProgram, const std::string& aTimeLimit, const FactLog& aFacts)
{
    const bool isOutOfTime = !aTimeLimit.empty() && !EndsInTime(aProgram, aTimeLimit);
    if (isOutOfTime) {
        EndOutOfTime(aProgram, aTimeLimit, aFacts);
    }
    const int status = WaitForEnd(aProgram);
    aFacts.Write(fact::kProgramEnd, {std::to_string(status)});
    return isOutOfTime ? kExitOutOfTime : status;
}

int RunProgram(const InsideSettings& aSettings, const RunningClock& aClock)
{
    const Spawned program = Spawn(aSettings.command, [&] {
        if (!aClock.preload.empty()) {
            setenv("LD_PRELOAD", aClock.preload.c_str(), 1);
        }
        if (!aSettings.ignoresInterrupt) {
            std::signal(SIGINT, SIG_DFL);
        }
        std::signal(SIGQUIT, SIG_DFL);
    });
    const FactLog facts(aSettings.factsFd);
    if (program.pid < 0) {
        return ExplainFailure(aSettings.command.front(), program.error);
    }
    facts.Write(fact::kProgram, {std::to_string(program.pid)});
    return WaitForProgram(program.pid, aSettings.timeLimit, facts);
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
    if (aSettings.recordFd >= 0 || aSettings.wholeTestFd >= 0) {
        const auto file = [&](int aFd) { return PcapFile(aFd, clock.clock); };
        system.emplace(BusSocket(), BusRecord{file(aSettings.recordSystemFd), file(aSettings.wholeSystemFd)});
        test.emplace(kTestBusSocket, BusRecord{file(aSettings.recordFd), file(aSettings.wholeTestFd)});
    }
    const int status = RunProgram(aSettings, clock);
    if (status != 0 && aSettings.isKept) {
        Keep(aSettings, status);
    }
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
    const auto run = [&aSettings] { return RunAll(aSettings); };
    return aSettings.factsFd < 0 ? run() : RunWitnessed(FactLog(aSettings.factsFd), Detail::Full, run);
}

} // namespace sandbox
