#include "Run.h"

#include "../Posix.h"

#include <algorithm>
#include <filesystem>

namespace sandbox
{

namespace
{

// "Run(int, char**) const" without the parameters' types.
std::string WithoutParameters(const std::string& aFunction)
{
    const size_t end = aFunction.rfind(')');
    size_t begin = end;
    for (int depth = 0; end != std::string::npos && begin > 0; --begin) {
        depth += aFunction[begin] == ')' ? 1 : aFunction[begin] == '(' ? -1 : 0;
        if (depth == 0) {
            break;
        }
    }
    return end == std::string::npos ? aFunction : aFunction.substr(0, begin + 1) + aFunction.substr(end);
}

} // namespace

std::string InCase(const Run& aRun)
{
    if (const TestCase* running = RunningCase(aRun.cases); running != nullptr) {
        return " in " + TitleOf(*running);
    }
    const TestCase* last = aRun.cases.all.empty() ? nullptr : &aRun.cases.all.back();
    if (last == nullptr || last->kind == TestCase::Kind::Case || !last->span.isOpen) {
        return {};
    }
    return std::string(" in the ") + (last->kind == TestCase::Kind::SetUp ? "set-up" : "tear-down") + " of " +
           (last->suite.empty() ? "the environment" : "suite " + last->suite);
}

const ProcessLife* FindProcess(const Run& aRun, int aId, Moment aTime)
{
    const auto found =
        std::find_if(aRun.processes.rbegin(), aRun.processes.rend(), [&](const ProcessLife& aProcess) {
            return aProcess.id == aId && aProcess.span.begin <= aTime;
        });
    return found != aRun.processes.rend() ? &*found : nullptr;
}

const ProcessLife* ProcessBehind(const Run& aRun, Bus aBus, const std::string& aConnection, Moment aTime)
{
    const auto found =
        std::find_if(aRun.connections.begin(), aRun.connections.end(), [&](const Connection& aKnown) {
            return aKnown.bus == aBus && aKnown.name == aConnection;
        });
    return found != aRun.connections.end() ? FindProcess(aRun, found->process, aTime) : nullptr;
}

const char* WordOf(Bus aBus)
{
    return aBus == Bus::Private ? "private bus" : "system bus";
}

std::string ProcessTitle(const Run& aRun, int aId, Moment aTime)
{
    const ProcessLife* process = FindProcess(aRun, aId, aTime);
    if (process == nullptr) {
        return aId > 0 ? "pid " + std::to_string(aId) : std::string();
    }
    return process->name + " (pid " + std::to_string(aId) + ")";
}

std::string FrameText(const Frame& aFrame)
{
    constexpr size_t kLongest = 120; // of templates' names
    const std::string name = WithoutParameters(aFrame.function);
    return name.substr(0, kLongest) + (name.size() > kLongest ? "…" : "") +
           (aFrame.place.empty() ? " in " + std::filesystem::path(aFrame.file).filename().string()
                                 : " at " + aFrame.place);
}

std::string EndText(const ProcessLife& aProcess)
{
    if (!aProcess.problem.empty()) {
        return "could not be run: " + aProcess.problem;
    }
    switch (aProcess.end.how) {
    case ProcessEnd::How::Exit:
        return "exit status " + std::to_string(aProcess.end.number);
    case ProcessEnd::How::Signal:
        return SignalText(aProcess.end.number);
    default:
        return aProcess.span.isOpen ? "still ran at the end" : "ended; its status is not known";
    }
}

std::string ResultText(const Run& aRun)
{
    switch (aRun.result) {
    case RunResult::CutOff:
        return "the sandbox was killed" + InCase(aRun) + ": what follows is what was known";
    case RunResult::TimedOut:
        return "ran out of its " + aRun.limit + " s" + InCase(aRun);
    case RunResult::Crashed:
    case RunResult::Killed:
        return SignalText(aRun.status - 128) + InCase(aRun);
    default:
        return "exit status " + std::to_string(aRun.status) +
               (aRun.status == 0 && aRun.result == RunResult::Failed
                    ? InCase(aRun) + " before googletest closed its cases"
                    : InCase(aRun));
    }
}

} // namespace sandbox
