#include "TraceWords.h"

#include "../Posix.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <ctime>

namespace sandbox
{

const char* WordOf(RunResult aResult)
{
    switch (aResult) {
    case RunResult::Passed:
        return "passed";
    case RunResult::Failed:
        return "failed";
    case RunResult::Crashed:
        return "crashed";
    case RunResult::Killed:
        return "killed";
    case RunResult::TimedOut:
        return "timed out";
    default:
        return "cut off";
    }
}

const char* WordOf(LogLevel aLevel)
{
    switch (aLevel) {
    case LogLevel::Debug:
        return "debug";
    case LogLevel::Info:
        return "info";
    case LogLevel::Warning:
        return "warning";
    case LogLevel::Critical:
        return "critical";
    case LogLevel::Fatal:
        return "fatal";
    default:
        return "output";
    }
}

bool HasDiedIn(const Run& aRun, const TestCase& aCase)
{
    return aCase.result == CaseResult::Running && aRun.result != RunResult::CutOff;
}

const char* StateOf(const Run& aRun, const TestCase& aCase)
{
    if (HasDiedIn(aRun, aCase)) {
        return aRun.result == RunResult::Failed ? "failed" : "killed";
    }
    switch (aCase.result) {
    case CaseResult::Passed:
        return "ok";
    case CaseResult::Failed:
        return "failed";
    case CaseResult::Skipped:
        return "skipped";
    default:
        return "running";
    }
}

const char* StateOf(const ProcessLife& aProcess)
{
    if (!aProcess.problem.empty()) {
        return "failed";
    }
    switch (aProcess.end.how) {
    case ProcessEnd::How::Signal:
        return "killed";
    case ProcessEnd::How::Exit:
        return aProcess.end.number == 0 ? "ok" : "failed";
    default:
        return aProcess.span.isOpen ? "running" : "ok";
    }
}

const char* StateOf(const Call& aCall)
{
    return aCall.state == Call::State::Failed    ? "failed"
           : aCall.state == Call::State::NoReply ? "noreply"
                                                 : "ok";
}

std::string KilledBy(const ProcessLife& aProcess)
{
    const auto last =
        std::find_if(aProcess.signals.rbegin(), aProcess.signals.rend(), [&](const SentSignal& aSignal) {
            return aProcess.end.how == ProcessEnd::How::Signal
                       ? aSignal.number == aProcess.end.number
                       : aSignal.number == SIGTERM || aSignal.number == SIGINT;
        });
    if (last == aProcess.signals.rend() || aProcess.end.how == ProcessEnd::How::Unknown) {
        return {};
    }
    const std::string sender = last->sender == aProcess.id
                                   ? "itself"
                                   : (last->senderName.empty() ? "the sandbox" : last->senderName) +
                                         " (pid " + std::to_string(last->sender) + ")";
    return sender + ", with " + SignalText(last->number);
}

std::string MemberName(const std::string& aInterface, const std::string& aMember)
{
    return aInterface.substr(aInterface.rfind('.') + 1) + (aInterface.empty() ? "" : ".") + aMember;
}

std::string DateText(long long aNanoseconds)
{
    const auto seconds = static_cast<time_t>(aNanoseconds / 1000000000);
    tm date = {};
    gmtime_r(&seconds, &date);
    char text[64];
    const size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &date);
    std::snprintf(text + length, sizeof text - length, ".%03lldZ", aNanoseconds / 1000000 % 1000);
    return text;
}

std::string Milliseconds(double aMilliseconds)
{
    const double rounded = std::round(aMilliseconds * 1000) / 1000;
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", std::abs(rounded - std::round(rounded)) < 0.05 ? 0 : 3, rounded);
    return text;
}

} // namespace sandbox
