/// Sees which programs start in the sandbox, how they end, and who signals whom.
#pragma once

#include "CrashWatch.h"
#include "Fact.h"

#include <functional>
#include <string>

namespace sandbox
{

enum class Detail {
    Light, ///< programs, their ends, signals between processes, and what goes to a terminal
    Full   ///< pauses as well; terminals are somebody else's
};

/// Runs `aBody` in a child and puts down what happens to all processes that come from it; those whose parent
/// is gone are handed to this process, which so learns how they end. Returns the child's status when the
/// child has ended, whatever else still runs.
int RunWitnessed(const FactSink& aFacts, CrashWatch& aCrashes, Detail aDetail,
                 const std::function<int()>& aBody);

} // namespace sandbox
