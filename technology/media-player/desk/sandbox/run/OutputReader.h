/// Reads what was printed.
#pragma once

#include "../record/Fact.h"
#include "Run.h"
#include "RunClock.h"

namespace sandbox
{

/// Fills in the log and the cases; the run knows its processes already.
void ReadOutput(const std::vector<Fact>& aFacts, const RunClock& aClock, Run& aRun);

} // namespace sandbox
