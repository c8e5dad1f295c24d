#include "PostMortem.h"

#include "Clauses.h"
#include "CrashWords.h"
#include "FailedWait.h"
#include "Service.h"
#include "Times.h"

#include <csignal>

namespace sandbox
{

namespace
{

constexpr size_t kMostLines = 15;

bool WasStoppedByPerson(const Run& aRun)
{
    const int signal = aRun.status - 128;
    return signal == SIGINT || signal == SIGTERM || signal == SIGHUP || signal == SIGPIPE;
}

std::string WaitText(const FailedWait& aWait)
{
    switch (aWait.what) {
    case FailedWait::For::Program:
        return aWait.about + " could not be started at " + Seconds(aWait.span.begin);
    case FailedWait::For::OneObject:
        return aWait.about + " had too many objects at " + Seconds(aWait.span.begin);
    default:
        break;
    }
    const std::string what = aWait.what == FailedWait::For::PrivateBus ? "the private bus"
                             : aWait.what == FailedWait::For::Object   ? "the object of " + aWait.about
                                                                       : aWait.about;
    return what + " was waited for in vain from " + Seconds(aWait.span.begin) + " to " +
           Seconds(aWait.span.end);
}

std::string EndText(const Run& aRun)
{
    const std::string program = ProcessTitle(aRun, aRun.program, aRun.end);
    switch (aRun.result) {
    case RunResult::CutOff:
        return "the sandbox was killed" + InCase(aRun) + " while " + program + " ran";
    case RunResult::TimedOut:
        return program + " " + ResultText(aRun);
    default:
        return program + " ended by " + ResultText(aRun);
    }
}

std::string Headline(const Run& aRun, const std::vector<FailedWait>& aWaits)
{
    const std::string end = EndedBadly(aRun) ? EndText(aRun) : std::string();
    const std::string more =
        aWaits.size() > 1 ? " (and " + std::to_string(aWaits.size() - 1) + " more)" : std::string();
    const std::string wait = aWaits.empty() ? std::string() : WaitText(aWaits.front()) + more;
    return "post-mortem: " + end + (end.empty() || wait.empty() ? "" : "; ") + wait;
}

} // namespace

bool EndedBadly(const Run& aRun)
{
    switch (aRun.result) {
    case RunResult::Crashed:
    case RunResult::TimedOut:
        return true;
    case RunResult::Killed:
        return !WasStoppedByPerson(aRun);
    case RunResult::CutOff: {
        const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
        return program != nullptr && program->span.isOpen;
    }
    default:
        return false;
    }
}

bool NeedsPostMortem(const Run& aRun)
{
    return EndedBadly(aRun) || !FailedWaits(aRun).empty();
}

std::vector<std::string> PostMortem(const Run& aRun)
{
    const std::vector<FailedWait> waits = FailedWaits(aRun);
    if (waits.empty() && !EndedBadly(aRun)) {
        return {};
    }
    std::vector<std::string> lines = {Headline(aRun, waits)};
    const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
    if (program != nullptr && !program->crash.empty()) {
        lines.push_back(program->name + " crashed " + CrashWords(*program));
    }
    const std::vector<Service> services = ServicesOf(aRun, waits);
    for (size_t told = 0; told < services.size(); ++told) {
        const size_t left = services.size() - told;
        if (lines.size() + 1 == kMostLines && left > 1) {
            lines.push_back("and " + std::to_string(left) + " more services");
            break;
        }
        lines.push_back(WordsFor(aRun, services[told]));
    }
    return lines;
}

} // namespace sandbox
