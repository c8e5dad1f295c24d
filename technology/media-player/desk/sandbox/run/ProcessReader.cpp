#include "ProcessReader.h"

#include "../World.h"
#include "../record/StackProgram.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

namespace sandbox
{

namespace
{

constexpr double kNanosecondsPerMs = 1e6;

// The fields of a fact, whatever of them is there.
class Fields
{
public:
    explicit Fields(const Fact& aFact) : m_Fields(aFact.fields) {}

    std::string Text(size_t aIndex) const { return aIndex < m_Fields.size() ? m_Fields[aIndex] : ""; }
    long long Number(size_t aIndex) const { return std::atoll(Text(aIndex).c_str()); }
    int Small(size_t aIndex) const { return static_cast<int>(Number(aIndex)); }

private:
    const std::vector<std::string>& m_Fields;
};

class Lives
{
public:
    Lives(const RunClock& aClock, Run& aRun) : m_Clock(aClock), m_Run(aRun) {}

    void Take(const Fact& aFact)
    {
        const Fields fields(aFact);
        const Moment time = m_Clock.At(aFact.time);
        if (aFact.kind == fact::kRoot) {
            m_Root = fields.Small(0);
        } else if (aFact.kind == fact::kExec) {
            Exec(aFact, time);
        } else if (aFact.kind == fact::kFork) {
            Fork(fields);
        } else if (aFact.kind == fact::kExit) {
            End(fields.Small(0), {ProcessEnd::How::Exit, fields.Small(1)}, time);
        } else if (aFact.kind == fact::kGone) {
            Gone(fields, time);
        } else if (aFact.kind == fact::kKill) {
            Kill(fields, time);
        } else if (aFact.kind == fact::kCrash) {
            Crash(aFact);
        } else if (aFact.kind == fact::kPause) {
            Sleep(fields, time);
        } else if (aFact.kind == fact::kProgram) {
            Program(fields.Small(0), time);
        } else if (aFact.kind == fact::kProgramEnd) {
            ProgramEnd(fields.Small(0), time);
        }
    }

private:
    ProcessLife* Find(int aId)
    {
        const auto found = m_Last.find(aId);
        return found != m_Last.end() ? &m_Run.processes[found->second] : nullptr;
    }

    ProcessLife* FindRunning(int aId)
    {
        ProcessLife* life = Find(aId);
        return life != nullptr && life->span.isOpen ? life : nullptr;
    }

    // A parent that never was a program was only there to start this one.
    ProcessLife& Begin(const Fields& aFamily, Moment aTime)
    {
        const ProcessLife* parent = Find(aFamily.Small(1));
        parent = parent != nullptr ? parent : Find(aFamily.Small(2));
        ProcessLife life;
        life.id = aFamily.Small(0);
        m_Last[life.id] = m_Run.processes.size();
        life.parent = parent != nullptr ? parent->id : aFamily.Small(1);
        life.parentName = parent != nullptr ? parent->name : "";
        life.span.begin = aTime;
        m_Run.processes.push_back(life);
        return m_Run.processes.back();
    }

    // One that fails while another program already runs there changes nothing.
    void Exec(const Fact& aFact, Moment aTime)
    {
        const Fields fields(aFact);
        ProcessLife* life = FindRunning(fields.Small(0));
        const bool isProgram = life != nullptr && !life->path.empty() && life->problem.empty();
        if (isProgram && !fields.Text(3).empty()) {
            return;
        }
        if (life == nullptr) {
            life = &Begin(fields, aTime);
        } else if (!isProgram) {
            life->span.begin = aTime;
        }
        life->problem = fields.Text(3);
        life->path = fields.Text(4);
        life->name = std::filesystem::path(life->path).filename();
        life->isMachinery = life->path == kPrivateProgram;
        life->command.clear();
        for (size_t i = 5; i < aFact.fields.size(); ++i) {
            life->command += (i > 5 ? " " : "") + aFact.fields[i];
        }
        if (life->service.empty() && life->parent != m_Root) {
            life->service = ServiceName(life->path, life->command);
        }
    }

    void Fork(const Fields& aFields)
    {
        if (Find(aFields.Small(0)) == nullptr) {
            ProcessLife& life = Begin(aFields, m_Clock.At(aFields.Number(3)));
            life.name = aFields.Text(4);
            life.isMachinery = life.name == "mpl-sandbox";
            const ProcessLife* parent = Find(life.parent);
            life.command = parent != nullptr ? parent->command : "";
        }
    }

    void End(int aId, const ProcessEnd& aEnd, Moment aTime)
    {
        if (ProcessLife* life = FindRunning(aId); life != nullptr) {
            life->end = aEnd;
            life->span.end = aTime;
            life->span.isOpen = false;
        }
    }

    // What its parent was told is better than what anybody else could see.
    void Gone(const Fields& aFields, Moment aTime)
    {
        ProcessEnd end;
        end.number = aFields.Small(2);
        end.how = aFields.Text(1) == "exit"     ? ProcessEnd::How::Exit
                  : aFields.Text(1) == "signal" ? ProcessEnd::How::Signal
                                                : ProcessEnd::How::Unknown;
        ProcessLife* life = Find(aFields.Small(0));
        if (life == nullptr) {
            return;
        }
        if (life->span.isOpen) {
            End(life->id, end.how == ProcessEnd::How::Unknown ? EndBySignal(*life) : end, aTime);
        } else if (end.how != ProcessEnd::How::Unknown) {
            life->end = end;
        }
    }

    // It did not say that it ends, and somebody had sent it a signal.
    static ProcessEnd EndBySignal(const ProcessLife& aLife)
    {
        return aLife.signals.empty() ? ProcessEnd{}
                                     : ProcessEnd{ProcessEnd::How::Signal, aLife.signals.back().number};
    }

    void Kill(const Fields& aFields, Moment aTime)
    {
        if (ProcessLife* life = FindRunning(aFields.Small(1)); life != nullptr) {
            const ProcessLife* sender = Find(aFields.Small(0));
            life->signals.push_back(
                {aTime, aFields.Small(2), aFields.Small(0), sender != nullptr ? sender->name : ""});
        }
    }

    void Crash(const Fact& aFact)
    {
        const Fields fields(aFact);
        if (ProcessLife* life = Find(fields.Small(0)); life != nullptr) {
            for (size_t i = 2; i + 2 < aFact.fields.size(); i += 3) {
                life->crash.push_back({fields.Text(i), fields.Text(i + 1), fields.Text(i + 2)});
            }
        }
    }

    // The kernel's clock is the machine's; a sleep that a signal interrupts ends where the next begins.
    void Sleep(const Fields& aFields, Moment aTime)
    {
        const double asked =
            static_cast<double>(aFields.Number(2)) * (m_Clock.clock.speed > 1 ? m_Clock.clock.speed : 1);
        const int thread = aFields.Small(1);
        if (const auto last = m_LastPause.find(thread); last != m_LastPause.end()) {
            Span& before = m_Run.pauses[last->second].span;
            before.end = std::min(before.end, aTime);
        }
        m_LastPause[thread] = m_Run.pauses.size();
        Pause pause;
        pause.span = {aTime, aTime + static_cast<Moment>(asked), false};
        pause.askedMs = asked / kNanosecondsPerMs;
        pause.process = aFields.Small(0);
        m_Run.pauses.push_back(pause);
    }

    // Where the kernel tells nobody of programs, the sandbox still knows its own.
    void Program(int aId, Moment aTime)
    {
        if (FindRunning(aId) == nullptr && !m_Run.command.empty()) {
            const Fact family = {0, {}, {std::to_string(aId)}};
            ProcessLife& life = Begin(Fields(family), aTime);
            life.path = m_Run.command.front();
            life.name = std::filesystem::path(life.path).filename();
            life.command = life.path;
        }
    }

    void ProgramEnd(int aStatus, Moment aTime)
    {
        if (ProcessLife* life = FindRunning(m_Run.program); life != nullptr) {
            const bool isSignal = aStatus > 128;
            End(life->id,
                {isSignal ? ProcessEnd::How::Signal : ProcessEnd::How::Exit,
                 isSignal ? aStatus - 128 : aStatus},
                aTime);
        }
    }

    const RunClock& m_Clock;
    Run& m_Run;
    int m_Root = 0;
    std::map<int, size_t> m_Last;      // process to its last life
    std::map<int, size_t> m_LastPause; // thread to its last pause
};

} // namespace

void ReadProcesses(const std::vector<Fact>& aFacts, const RunClock& aClock, Run& aRun)
{
    Lives lives(aClock, aRun);
    for (const Fact& fact : aFacts) {
        lives.Take(fact);
    }
    // Nobody sleeps on when it has ended.
    for (Pause& pause : aRun.pauses) {
        const ProcessLife* process = FindProcess(aRun, pause.process, pause.span.begin);
        if (process != nullptr && !process->span.isOpen) {
            pause.span.end = std::min(pause.span.end, std::max(process->span.end, pause.span.begin));
        }
    }
}

} // namespace sandbox
