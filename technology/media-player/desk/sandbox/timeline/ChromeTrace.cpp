#include "ChromeTrace.h"

#include "Json.h"
#include "TraceEvents.h"
#include "TraceWords.h"

#include <algorithm>

namespace sandbox
{

namespace
{

// "the connection's name, and its process"
class Names
{
public:
    explicit Names(const Run& aRun) : m_Run(aRun) {}

    std::string Party(Bus aBus, const std::string& aName, Moment aTime) const
    {
        const std::string process = ProcessOf(aBus, aName, aTime);
        return process.empty() ? aName : aName + ", " + process;
    }

private:
    std::string ProcessOf(Bus aBus, const std::string& aName, Moment aTime) const
    {
        for (const Connection& connection : m_Run.connections) {
            if (connection.bus == aBus && connection.name == aName) {
                return ProcessTitle(m_Run, connection.process, aTime);
            }
        }
        const auto owned =
            std::find_if(m_Run.names.rbegin(), m_Run.names.rend(), [&](const NameOwnership& aOwned) {
                return aOwned.bus == aBus && aOwned.name == aName && aOwned.span.begin <= aTime;
            });
        return owned != m_Run.names.rend() ? ProcessTitle(m_Run, owned->process, aTime) : std::string();
    }

    const Run& m_Run;
};

std::string Joined(const std::vector<std::string>& aWords)
{
    std::string joined;
    for (const std::string& word : aWords) {
        joined += (joined.empty() ? "" : " ") + word;
    }
    return joined;
}

// Spans have to come in the order of their begins.
template <typename Things>
std::vector<const typename Things::value_type*> Sorted(const Things& aThings)
{
    std::vector<const typename Things::value_type*> sorted;
    sorted.reserve(aThings.size());
    for (const auto& thing : aThings) {
        sorted.push_back(&thing);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto* aLeft, const auto* aRight) {
        return aLeft->span.begin < aRight->span.begin;
    });
    return sorted;
}

void AddCases(const Run& aRun, TraceEvents& aEvents)
{
    for (const TestCase* testCase : Sorted(aRun.cases.all)) {
        const std::string output =
            HasDiedIn(aRun, *testCase)
                ? "The program ended in it: " + ResultText(aRun) + "\n" + testCase->output
            : testCase->result == CaseResult::Failed ? Failures(testCase->output)
                                                     : testCase->output;
        aEvents.AddSpan(Lane::Cases, "googletest", TitleOf(*testCase), testCase->span,
                        JsonObject().Text("state", StateOf(aRun, *testCase)).Text("failure", output));
    }
}

void AddPauses(const Run& aRun, TraceEvents& aEvents)
{
    for (const Pause* pause : Sorted(aRun.pauses)) {
        const std::string asked = Milliseconds(pause->askedMs);
        aEvents.AddSpan(Lane::Pauses, ProcessTitle(aRun, pause->process, pause->span.begin), asked + " ms",
                        pause->span, JsonObject().Raw("asked", asked));
    }
}

std::string CrashText(const ProcessLife& aProcess)
{
    std::string lines;
    for (const Frame& frame : aProcess.crash) {
        lines += (lines.empty() ? "" : "\n") + FrameText(frame);
    }
    return lines;
}

void AddProcesses(const Run& aRun, TraceEvents& aEvents)
{
    for (const ProcessLife* process : Sorted(aRun.processes)) {
        if (process->isMachinery) {
            continue;
        }
        const std::string parent = ProcessTitle(aRun, process->parent, process->span.begin);
        aEvents.AddSpan(Lane::Processes, process->name, process->name, process->span,
                        JsonObject()
                            .Text("state", StateOf(*process))
                            .Raw("pid", std::to_string(process->id))
                            .Text("command", process->command)
                            .Text("end", EndText(*process))
                            .Text("killedBy", KilledBy(*process))
                            .Text("crash", CrashText(*process))
                            .Text("startedBy", process->parentName.empty() ? "the sandbox" : parent));
    }
}

void AddNames(const Run& aRun, TraceEvents& aEvents)
{
    for (const NameOwnership* name : Sorted(aRun.names)) {
        aEvents.AddSpan(Lane::Names, name->name, name->name, name->span,
                        JsonObject()
                            .Text("state", name->span.isOpen ? "running" : "ok")
                            .Text("bus", WordOf(name->bus))
                            .Text("owner", name->owner)
                            .Text("process", ProcessTitle(aRun, name->process, name->span.begin)));
    }
}

void AddCalls(const Run& aRun, TraceEvents& aEvents)
{
    const Names names(aRun);
    for (const Call* call : Sorted(aRun.calls)) {
        const Moment begin = call->span.begin;
        const bool isError = call->state == Call::State::Failed;
        aEvents.AddSpan(Lane::Calls, WordOf(call->bus), MemberName(call->interface, call->member), call->span,
                        JsonObject()
                            .Text("state", StateOf(*call))
                            .Text("bus", WordOf(call->bus))
                            .Text("from", names.Party(call->bus, call->from, begin))
                            .Text("to", names.Party(call->bus, call->to, begin))
                            .Text("path", call->path)
                            .Text("request", call->request)
                            .Text("reply", isError ? "" : call->reply)
                            .Text("error", isError ? call->error + ": " + call->reply : ""));
    }
}

void AddSignals(const Run& aRun, TraceEvents& aEvents)
{
    const Names names(aRun);
    for (const Signal& signal : aRun.signals) {
        aEvents.AddPoint(Lane::Signals, WordOf(signal.bus), MemberName(signal.interface, signal.member),
                         signal.time,
                         JsonObject()
                             .Text("bus", WordOf(signal.bus))
                             .Text("from", names.Party(signal.bus, signal.from, signal.time))
                             .Text("path", signal.path)
                             .Text("content", signal.content));
    }
}

void AddLog(const Run& aRun, TraceEvents& aEvents)
{
    for (const LogLine& line : aRun.log) {
        aEvents.AddPoint(Lane::Log, line.process.empty() ? "output" : line.process, line.text, line.time,
                         JsonObject().Text("level", WordOf(line.level)).Text("process", line.process));
    }
}

std::string ClockText(const Run& aRun)
{
    return aRun.speed == "1" ? "Times are the machine's, from the program's start."
                             : "Times are the sandbox's own, from the program's start; its clock runs at " +
                                   aRun.speed + " times the machine's speed.";
}

std::string About(const Run& aRun, const std::vector<std::string>& aPostMortem)
{
    std::string lines;
    for (const std::string& line : aPostMortem) {
        lines += (lines.empty() ? "" : ",") + Quoted(line);
    }
    return JsonObject()
        .Text("command", Joined(aRun.command))
        .Text("result", WordOf(aRun.result))
        .Text("resultText", ResultText(aRun))
        .Text("start", DateText(aRun.start))
        .Text("speed", aRun.speed)
        .Text("clock", ClockText(aRun))
        .Text("version", MPL_VERSION)
        .Raw("postMortem", "[" + lines + "]")
        .Raw("cutOff", aRun.result == RunResult::CutOff ? "true" : "false")
        .Json();
}

} // namespace

std::string ChromeTrace(const Run& aRun, const std::vector<std::string>& aPostMortem)
{
    TraceEvents events;
    AddCases(aRun, events);
    AddPauses(aRun, events);
    AddProcesses(aRun, events);
    AddNames(aRun, events);
    AddCalls(aRun, events);
    AddSignals(aRun, events);
    AddLog(aRun, events);
    return JsonObject()
               .Raw("traceEvents", events.Json())
               .Text("displayTimeUnit", "ms")
               .Raw("otherData", About(aRun, aPostMortem))
               .Json() +
           "\n";
}

} // namespace sandbox
