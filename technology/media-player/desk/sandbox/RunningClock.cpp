#include "RunningClock.h"

#include "Posix.h"
#include "World.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <sstream>

namespace sandbox
{

namespace
{

// libfaketime's variables, see its README. It names the memory that its processes share in this one itself.
constexpr const char* kSharedVariable = "FAKETIME_SHARED";

long long Nanoseconds(const timespec& aTime)
{
    return aTime.tv_sec * kSecond + aTime.tv_nsec;
}

long long ShownTime()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return Nanoseconds(now);
}

long long MachineTime()
{
    timespec now = {};
    syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
    return Nanoseconds(now);
}

// When the shown clock left the machine's: from the pair of readings that are closest together.
long long StartOfShownClock(double aSpeed)
{
    long long start = 0;
    long long least = 0;
    for (int attempt = 0; attempt < 20; ++attempt) {
        const long long before = MachineTime();
        const long long shown = ShownTime();
        const long long spent = MachineTime() - before;
        if (attempt == 0 || spent < least) {
            const long long machine = before + spent / 2;
            start = machine - static_cast<long long>(static_cast<double>(shown - machine) / (aSpeed - 1));
            least = spent;
        }
    }
    return start;
}

void SetFaketimeEnvironment(const std::string& aSpeed)
{
    setenv(kSpeedVariable, aSpeed.c_str(), 1);
    setenv("FAKETIME", ("+0 x" + aSpeed).c_str(), 1);
    // Read once: later, a program may have chosen a language that writes numbers in another way.
    setenv("FAKETIME_CACHE_DURATION", "2000000000", 1);
    setenv("NO_FAKE_STAT", "1", 1); // file times are our library's
    unsetenv(kSharedVariable);
}

std::string With(const std::string& aLibraries)
{
    const char* given = std::getenv("LD_PRELOAD");
    return given != nullptr && *given != '\0' ? std::string(given) + ":" + aLibraries : aLibraries;
}

} // namespace

bool StartClock(const std::string& aSpeed, const std::string& aFaketime, RunningClock& aClock,
                std::string& aReason)
{
    SetFaketimeEnvironment(aSpeed);
    aReason = "libfaketime (" + aFaketime + ") gives no clock of its own here";
    Pipe told = MakePipe();
    const Spawned first = Spawn({kPrivateProgram, kClockMark}, [&] {
        dup2(told.write.Get(), STDOUT_FILENO);
        setenv("LD_PRELOAD", aFaketime.c_str(), 1);
    });
    told.write.Close();
    std::istringstream text(ReadAll(told.read.Get()));
    std::string shared;
    if (first.pid < 0 || WaitForEnd(first.pid) != 0 || !(text >> aClock.clock.start) ||
        !std::getline(text >> std::ws, shared)) {
        return false;
    }
    aClock.clock.speed = std::strtod(aSpeed.c_str(), nullptr);
    aClock.preload = With(kPrivateClock + ":" + aFaketime);
    setenv(kSharedVariable, shared.c_str(), 1);
    setenv(kClockStartVariable, std::to_string(aClock.clock.start).c_str(), 1);
    return true;
}

void TellClock()
{
    const char* shared = std::getenv(kSharedVariable);
    const char* speed = std::getenv(kSpeedVariable);
    if (shared == nullptr || speed == nullptr) {
        _exit(kExitNoSandbox);
    }
    const long long start = StartOfShownClock(std::strtod(speed, nullptr));
    WriteAll(STDOUT_FILENO, std::to_string(start) + " " + shared);
    _exit(0);
}

void LeaveClock(char** aArguments)
{
    const char* value = std::getenv("LD_PRELOAD");
    const std::string libraries = value != nullptr ? value : "";
    const size_t clock = libraries.find(kPrivateClock);
    if (clock == std::string::npos) {
        return;
    }
    setenv("LD_PRELOAD", libraries.substr(0, clock).c_str(), 1);
    execv("/proc/self/exe", aArguments);
}

} // namespace sandbox
