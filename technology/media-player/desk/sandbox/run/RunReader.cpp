#include "RunReader.h"

#include "../Posix.h"
#include "BusReader.h"
#include "OutputReader.h"
#include "ProcessReader.h"
#include "RunClock.h"

#include <algorithm>
#include <cstdlib>

namespace sandbox
{

namespace
{

const Fact* Find(const std::vector<Fact>& aFacts, const std::string& aKind)
{
    const auto found =
        std::find_if(aFacts.begin(), aFacts.end(), [&](const Fact& aFact) { return aFact.kind == aKind; });
    return found != aFacts.end() ? &*found : nullptr;
}

std::string FieldOf(const std::vector<Fact>& aFacts, const std::string& aKind, size_t aIndex)
{
    const Fact* fact = Find(aFacts, aKind);
    return fact != nullptr && aIndex < fact->fields.size() ? fact->fields[aIndex] : std::string();
}

// When the program began to be what it is, or the first that is known.
long long MachineStart(const std::vector<Fact>& aFacts)
{
    const Fact* program = Find(aFacts, fact::kProgram);
    if (program == nullptr || program->fields.empty()) {
        return aFacts.empty() ? 0 : aFacts.front().time;
    }
    long long start = program->time;
    for (const Fact& fact : aFacts) {
        if (fact.kind == fact::kExec && fact.time <= program->time && !fact.fields.empty() &&
            fact.fields[0] == program->fields[0]) {
            start = fact.time;
        }
    }
    return start;
}

RunResult ResultOf(const Run& aRun, const std::vector<Fact>& aFacts)
{
    if (!aRun.limit.empty()) {
        return RunResult::TimedOut;
    }
    if (Find(aFacts, fact::kEnd) == nullptr) {
        return RunResult::CutOff;
    }
    const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
    const bool hasExited = program != nullptr && program->end.how == ProcessEnd::How::Exit;
    if (aRun.status > 128 && !hasExited) {
        return IsCrash(aRun.status - 128) ? RunResult::Crashed : RunResult::Killed;
    }
    const bool isWhole = aRun.cases.all.empty() || aRun.cases.areClosed;
    return aRun.status == 0 && isWhole ? RunResult::Passed : RunResult::Failed;
}

void TakeCommand(const std::vector<Fact>& aFacts, Run& aRun)
{
    if (const Fact* command = Find(aFacts, fact::kCommand); command != nullptr) {
        aRun.command = command->fields;
    }
    if (const std::string speed = FieldOf(aFacts, fact::kClock, 0); !speed.empty()) {
        aRun.speed = speed;
    }
    aRun.limit = FieldOf(aFacts, fact::kLimit, 0);
    aRun.program = std::atoi(FieldOf(aFacts, fact::kProgram, 0).c_str());
    const std::string ofProgram = FieldOf(aFacts, fact::kProgramEnd, 0);
    aRun.status = std::atoi((ofProgram.empty() ? FieldOf(aFacts, fact::kEnd, 0) : ofProgram).c_str());
}

void TakeUnits(const std::vector<Fact>& aFacts, Run& aRun)
{
    for (const Fact& fact : aFacts) {
        if (fact.kind == fact::kUnit && fact.fields.size() == 3) {
            aRun.units.push_back({fact.fields[0], fact.fields[1], fact.fields[2]});
        }
    }
}

// What was still going on went on to the end.
template <typename Things>
void CloseSpans(Things& aThings, Moment aEnd)
{
    for (auto& thing : aThings) {
        if (thing.span.isOpen) {
            thing.span.end = std::max(aEnd, thing.span.begin);
        }
    }
}

// A case that still runs does so as long as its program.
Moment EndOfProgram(const Run& aRun)
{
    const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
    return program != nullptr && !program->span.isOpen ? program->span.end : aRun.end;
}

// The end of the run is the last that is known of it.
Moment LastMoment(const Run& aRun)
{
    Moment last = 0;
    for (const Call& call : aRun.calls) {
        last = std::max({last, call.span.begin, call.span.end});
    }
    for (const Signal& signal : aRun.signals) {
        last = std::max(last, signal.time);
    }
    return last;
}

} // namespace

Clock ClockOf(const std::vector<Fact>& aFacts)
{
    Clock clock;
    if (const std::string speed = FieldOf(aFacts, fact::kClock, 0); !speed.empty()) {
        clock.speed = std::strtod(speed.c_str(), nullptr);
        clock.start = std::atoll(FieldOf(aFacts, fact::kClock, 1).c_str());
    }
    return clock;
}

Run ReadRun(const RecordedRun& aRecord)
{
    Run run;
    RunClock clock;
    clock.clock = ClockOf(aRecord.facts);
    clock.zero = clock.clock.FromMachine(MachineStart(aRecord.facts));
    run.start = clock.zero;
    TakeCommand(aRecord.facts, run);
    TakeUnits(aRecord.facts, run);
    ReadProcesses(aRecord.facts, clock, run);
    ReadOutput(aRecord.facts, clock, run);
    ReadBus(aRecord.testBus, Bus::Private, clock.zero, run);
    ReadBus(aRecord.systemBus, Bus::System, clock.zero, run);
    run.end = std::max(LastMoment(run), aRecord.facts.empty() ? 0 : clock.At(aRecord.facts.back().time));
    CloseSpans(run.cases.all, EndOfProgram(run));
    CloseSpans(run.processes, run.end);
    CloseSpans(run.connections, run.end);
    CloseSpans(run.names, run.end);
    CloseSpans(run.calls, run.end);
    run.result = ResultOf(run, aRecord.facts);
    return run;
}

} // namespace sandbox
