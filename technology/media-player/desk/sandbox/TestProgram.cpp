#include "TestProgram.h"

#include "Posix.h"
#include "record/Fact.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr const char* kLastWordsSeconds = "2";

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

} // namespace

int RunTestProgram(const InsideSettings& aSettings, const RunningClock& aClock)
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

} // namespace sandbox
