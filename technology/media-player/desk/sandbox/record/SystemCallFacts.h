/// What the calls of processes say, as facts.
#pragma once

#include "CrashWatch.h"
#include "Fact.h"
#include "SystemCalls.h"

#include <sys/types.h>

#include <vector>

namespace sandbox
{

class SystemCallFacts
{
public:
    SystemCallFacts(const FactSink& aFacts, CrashWatch& aCrashes, int aListener)
        : m_Facts(aFacts), m_Crashes(aCrashes), m_Listener(aListener)
    {
    }

    /// Takes the next call, lets it be made and puts it down. The processes that are new by it.
    std::vector<pid_t> TakeOne();

private:
    std::vector<Fact> FactsOf(const SystemCall& aCall, pid_t aProcess, std::vector<pid_t>& aNew);
    Fact ExecFact(pid_t aProcess, const std::string& aPath, uint64_t aArguments) const;
    std::vector<Fact> ExitFacts(const SystemCall& aCall, pid_t aProcess, std::vector<pid_t>& aNew);

    FactSink m_Facts;
    CrashWatch& m_Crashes;
    int m_Listener;
};

} // namespace sandbox
