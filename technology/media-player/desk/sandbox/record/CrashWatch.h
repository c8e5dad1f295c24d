/// Sees where services and the test program crash.
#pragma once

#include "Fact.h"

#include <sys/types.h>
#include <sys/wait.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace sandbox
{

/// Traces them as a debugger does, which costs them nothing until a signal or a new thread comes. The kernel
/// lets only one trace a process, so it is let go when anybody else wants to.
class CrashWatch
{
public:
    /// The test program is started by that name.
    CrashWatch(FactLog aFacts, std::string aProgram) : m_Facts(aFacts), m_Program(std::move(aProgram)) {}

    /// Who starts the test program.
    void SetRoot(pid_t aRoot) { m_Root = std::to_string(aRoot); }

    /// To be called while the caller still waits for what the fact tells; those but starts of programs do not
    /// matter.
    void Follow(const Fact& aFact);

    /// What waitid has told. False when that is the end of a process, which others want to know, too.
    bool Take(const siginfo_t& aChange);

    /// Lets the process of this thread go for good. Blocks until it is, at most a tenth of a second.
    void LetGo(pid_t aThread);

    /// The same for all, and follows none from then on.
    void LetAllGo();

    /// Blocks until all that was seen is put down, at most ten seconds.
    void Finish() const;

private:
    void TakeStop(pid_t aThread, int aSignal, int aEvent);
    void NoteCrash(pid_t aThread, int aSignal);

    FactLog m_Facts;
    std::string m_Program;
    std::string m_Root;
    bool m_HasGivenUp = false;
    std::map<pid_t, pid_t> m_Threads; ///< traced, to their processes
    std::set<pid_t> m_Free;           ///< processes that are to be let go
    std::set<pid_t> m_Writers;        ///< that put down what was seen
};

} // namespace sandbox
